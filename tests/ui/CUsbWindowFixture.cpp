#include "tests/ui/CUsbWindowFixture.h"

#include "tests/golden/MGolden.h"
#include "tests/ui/CModalAnswer.h"

#include <QTest>

#include <algorithm>
#include <utility>

namespace {

constexpr int Usb = 2;

}  // namespace

std::string UsbAction::Wire(std::size_t p_iCount) const {
    std::string strWire;
    for (std::size_t i = 0; i < p_iCount; ++i) {
        strWire += m_strCommands[i];
    }
    return strWire;
}

const std::vector<UsbAction>& UsbAction::All() {
    using enum Manner;
    // clang-format off
    static const std::vector<UsbAction> objActions{
        {"btnRead", {"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"}, Reads},
        {"btnSet", MGolden::SetCommands(), Writes},
        {"btnLanSet", MGolden::LanSetCommands(), Writes},
        {"btnLanRead", {"{Z5;3|}"}, Reads},
        {"btnGetStatus", {"{WS|}"}, Writes},
        {"btnHeadCheck", {"{HD001,A|}", "{WS|}"}, Writes},
        {"btnRamClear", {"{Z4;0|}"}, Writes},
        {"btnThresholdCalib", {"{WT;1000,1|}"}, Writes},
        {"btnReflect", {"{Z6;0|}"}, Silent},
        {"btnTrans", {"{Z6;1|}"}, Silent},
        {"btnPaperEnd", {"{Z6;01|}", "{Z6;11|}"}, Silent},
        {"btnTestPrint", {"{Z3;007600730105700010000|}"}, Writes},
        {"btnDiagPrint", {"{Z10|}"}, Writes},
    };
    // clang-format on
    return objActions;
}

void CUsbWindowFixture::CAnswerLog::Line(std::size_t /*p_iConnection*/,
                                         std::string_view p_strLine) {
    constexpr std::string_view strMark = "< ";
    if (p_strLine.starts_with(strMark)) {
        p_strLine.remove_prefix(strMark.size());
        const std::lock_guard objLock(m_objMutex);
        m_strAnswers.emplace_back(p_strLine.substr(0, p_strLine.rfind("   ")));
    }
}

std::vector<std::string> CUsbWindowFixture::CAnswerLog::Take() {
    const std::lock_guard objLock(m_objMutex);
    return std::exchange(m_strAnswers, {});
}

CUsbWindowFixture::CUsbWindowFixture(Pace p_iPace)
    : m_objWindow(Platform(p_iPace)) {}

CPlatform CUsbWindowFixture::Platform(Pace p_iPace) {
    const CPlatform objReal = m_objPlatform.Interfaces();
    const IClock& objClock = p_iPace == Pace::Real ? objReal.m_objClock : m_objHastyClock;
    return {
        {objReal.m_objEventLoop, objClock, objReal.m_objTcpClient, objReal.m_objSerialPort,
         objReal.m_objUsbLibrary},
        {m_objBoxes, objReal.m_objFileDialog, objReal.m_objFileStore, objReal.m_strProgramFolder}};
}

void CUsbWindowFixture::SetUp() {
    ASSERT_TRUE(m_objWorld.IsInside());
    ASSERT_TRUE(m_objWindow.Open());
    m_objWindow.Choose("cmbInterface", Usb);
}

void CUsbWindowFixture::TearDown() {
    m_objPlatform.Interfaces().m_objUsbLibrary.Dll_closeUSB();
    UnplugAll();
}

void CUsbWindowFixture::TeachPrinter() {
    m_objPrinter.Handle(MTaughtPrinter::Parameters);
    m_objPrinter.Handle(MTaughtPrinter::Adjustments);
}

CEmulatedPrinter& CUsbWindowFixture::Plug(const CUsbBehaviour& p_objBehaviour,
                                          const CFaultSettings& p_objFaults) {
    const int iNumber = static_cast<int>(m_objDevices.size()) + 1;
    m_objDevices.push_back(std::make_unique<CEmulatedPrinter>(
        m_objWorld, m_objPrinter, m_objLog, p_objBehaviour, p_objFaults, iNumber));
    m_iTaken = 0;
    return *m_objDevices.back();
}

void CUsbWindowFixture::UnplugAll() {
    for (const auto& objDevice : m_objDevices) {
        EXPECT_FALSE(objDevice->IsClaimed());
    }
    m_objDevices.clear();
}

void CUsbWindowFixture::Press(const char* p_strButton) {
    m_objWindow.Click(p_strButton);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList()) << p_strButton;
}

void CUsbWindowFixture::PressSetup() {
    const CModalAnswer objAnswer("FmInterfaceSetup", [](QWidget& p_objDialog) {
        QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnSet"), Qt::LeftButton);
    });
    Press("btnSetup");
    EXPECT_TRUE(objAnswer.Done());
    m_objWindow.Form().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
}

std::string CUsbWindowFixture::Taken() {
    const std::string strAll = m_objDevices.back()->Taken();
    return strAll.substr(std::exchange(m_iTaken, strAll.size()));
}

std::vector<std::string> CUsbWindowFixture::Answers() {
    return m_objLog.Take();
}

void CUsbWindowFixture::ExpectBeeps(int p_iCount) {
    EXPECT_EQ(m_objBoxes.BeepCount() - m_iBeeps, p_iCount);
    m_iBeeps = m_objBoxes.BeepCount();
}
