#include "platform/widgets/CQtPlatform.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CSimulatorProcess.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/CModalAnswer.h"
#include "tests/ui/MTaughtPrinter.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int Com = 0;
constexpr int PatienceMs = 20'000;

const std::vector<std::string> ReadRequests{"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"};

/// The open main window with the real serial port, and a printer made of software at COM1.
class FmMainSerialTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_objWindow.Open()); }

    void StartPrinter(const QStringList& p_strOptions = {}) {
        ASSERT_TRUE(m_objPrinter.StartSerial(QStringList{"--alias", m_objDevices.filePath("com1")} +
                                             p_strOptions))
            << m_objPrinter.ErrorText();
    }

    /// Gives the printer other settings than the defaults, as another program at the port.
    void TeachPrinter() {
        {
            std::ofstream objPort(m_objPrinter.Name());
            objPort << MTaughtPrinter::Parameters << MTaughtPrinter::Adjustments
                    << MTaughtPrinter::Address << std::flush;
            ASSERT_TRUE(m_objPrinter.WaitForCommands(3, PatienceMs));
        }
        ASSERT_TRUE(m_objPrinter.WaitForLine("port closed", PatienceMs));
        m_iTaught = 3;
    }

    /// Chooses COM and opens the port as a person does.
    void OpenPort() {
        PressSetup();
        ASSERT_TRUE(m_objSerialPort.IsOpen());
    }

    void PressSetup() {
        m_objWindow.Choose("cmbInterface", Com);
        const CModalAnswer objAnswer("FmInterfaceSetup", [](QWidget& p_objDialog) {
            QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnSet"), Qt::LeftButton);
        });
        m_objWindow.Click("btnSetup");
        ASSERT_TRUE(objAnswer.Done());
        m_objWindow.Form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
    }

    /// Waits until the window has sent p_iCount commands; all that it has sent.
    std::vector<std::string> Sent(std::size_t p_iCount) {
        EXPECT_TRUE(m_objPrinter.WaitForCommands(m_iTaught + p_iCount, PatienceMs));
        std::vector<std::string> strCommands = m_objPrinter.Commands();
        strCommands.erase(strCommands.begin(),
                          strCommands.begin() + static_cast<std::ptrdiff_t>(m_iTaught));
        return strCommands;
    }

    bool WaitForShown(const QString& p_strName, const QString& p_strText) {
        return CSimulatorProcess::WaitUntil(
            [&] { return m_objWindow.Shown(p_strName) == p_strText; }, PatienceMs);
    }

    /// Whatever the printer answers, the window shows nothing of it.
    void ExpectThePageToStay() {
        TeachPrinter();
        OpenPort();
        const auto strBefore = m_objWindow.ShownFields();
        m_objWindow.Click("btnLanRead");
        m_objWindow.Click("btnGetStatus");
        EXPECT_EQ(Sent(2), (std::vector<std::string>{"{Z5;3|}", "{WS|}"}));
        ASSERT_TRUE(CSimulatorProcess::WaitUntil([this] { return AnswerCount() == m_iTaught + 2; },
                                                 PatienceMs));
        QTest::qWait(100);  // what was sent arrives
        EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
        EXPECT_EQ(Shown("lblStatus"), "");
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }

    /// How many answers the printer has sent.
    [[nodiscard]] std::size_t AnswerCount() const {
        const auto iCount =
            std::ranges::count_if(m_objPrinter.Lines(), [](const std::string& p_strLine) {
                return p_strLine.starts_with("< ");
            });
        return static_cast<std::size_t>(iCount);
    }

    static CPlatform WithBoxes(const CPlatform& p_objReal, IMessageBox& p_objBoxes) {
        return {{p_objReal.m_objEventLoop, p_objReal.m_objClock, p_objReal.m_objTcpClient,
                 p_objReal.m_objSerialPort, p_objReal.m_objUsbLibrary},
                {p_objBoxes, p_objReal.m_objFileDialog, p_objReal.m_objFileStore,
                 p_objReal.m_strProgramFolder}};
    }

    QString Shown(const QString& p_strName) { return m_objWindow.Shown(p_strName); }

    QTemporaryDir m_objDevices;
    CSimulatorProcess m_objPrinter;
    CQtPlatform m_objPlatform{m_objDevices.path().toStdString()};
    ISerialPort& m_objSerialPort = m_objPlatform.Interfaces().m_objSerialPort;
    CFakeMessageBox m_objBoxes;
    CMainWindow m_objWindow{WithBoxes(m_objPlatform.Interfaces(), m_objBoxes)};
    std::size_t m_iTaught = 0;
};

TEST_F(FmMainSerialTest, ReadFillsThePageInItsPauses) {
    StartPrinter();
    TeachPrinter();
    OpenPort();
    QElapsedTimer objTime;
    objTime.start();
    m_objWindow.Click("btnRead");
    EXPECT_GE(objTime.elapsed(), 2950);
    EXPECT_EQ(Sent(3), ReadRequests);
    MTaughtPrinter::ExpectPage(m_objWindow);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainSerialTest, SetSendsBothCommandsAndAwaitsNoAnswer) {
    StartPrinter();
    OpenPort();
    m_objWindow.Type("SeFeedAdj", "12.3");
    QElapsedTimer objTime;
    objTime.start();
    m_objWindow.Click("btnSet");
    EXPECT_LT(objTime.elapsed(), 4000);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_EQ(Sent(2), (std::vector<std::string>{
                           MGolden::Parameters,
                           MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "123"}})}));
    m_objWindow.Type("SeFeedAdj", "0");
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Shown("SeFeedAdj"), "12.3");
}

TEST_F(FmMainSerialTest, LanReadAndLanSetGoOverTheLineToo) {
    StartPrinter();
    TeachPrinter();
    OpenPort();
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Sent(1), std::vector<std::string>{"{Z5;3|}"});
    EXPECT_EQ(Shown("SeIpAddress4"), "78");
    m_objWindow.Type("SeIpAddress4", "77");
    m_objWindow.Type("txtDhcpName", "label printer 01");
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(Sent(6),
              (std::vector<std::string>{
                  "{Z5;3|}", MGolden::With(MGolden::IpAddress, {{"IpAddress4", "077"}}),
                  MGolden::Gateway, MGolden::SubnetMask, MGolden::SocketPort,
                  MGolden::With(MGolden::Dhcp, {{"DhcpClientHost", "label printer 01"}})}));
}

// Bytes go out one by one, and LAN SET leaves the buttons enabled between them.
TEST_F(FmMainSerialTest, NoCommandPressedInsideOfLanSetLandsInTheMiddleOfItsOwn) {
    StartPrinter();
    OpenPort();
    const std::vector<std::string> strLanSet =
        CSimulatorProcess::AsPrinted(MGolden::LanSetCommands());
    std::size_t iSent = 0;
    for (const int iTurns : {1, 3, 10, 30, 60}) {
        SCOPED_TRACE(iTurns);
        int iTurn = 0;
        bool bRuns = true;
        bool bInside = false;
        QTimer objTurns;  // one in each turn of the event loop
        objTurns.callOnTimeout([&] {
            if (++iTurn == iTurns) {
                objTurns.stop();
                m_objWindow.Click("btnGetStatus");
                bInside = bRuns;
            }
        });
        objTurns.start(0);
        m_objWindow.Click("btnLanSet");
        bRuns = false;
        EXPECT_TRUE(bInside);
        const std::vector<std::string> strAll = Sent(iSent + 6);
        std::vector<std::string> strSent(strAll.begin() + static_cast<std::ptrdiff_t>(iSent),
                                         strAll.end());
        iSent = strAll.size();
        EXPECT_EQ(std::erase(strSent, "{WS|}"), 1U);
        EXPECT_EQ(strSent, strLanSet);
    }
}

TEST_F(FmMainSerialTest, StatusAndHeadCheckAreShownEachInItsPlace) {
    StartPrinter();
    OpenPort();
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_TRUE(WaitForShown("lblStatus", "ON LINE"));
    EXPECT_EQ(Shown("lblHeadCheck"), "");
    m_objWindow.Click("btnHeadCheck");
    EXPECT_EQ(Shown("lblHeadCheck"), "ON LINE");
    EXPECT_EQ(Shown("lblStatus"), "");
    EXPECT_EQ(Sent(2), (std::vector<std::string>{"{WS|}", "{HD001,A|}"}));
}

TEST_F(FmMainSerialTest, EachMaintenanceButtonSendsItsCommands) {
    StartPrinter();
    OpenPort();
    for (const char* strButton : {"btnRamClear", "btnThresholdCalib", "btnReflect", "btnTrans",
                                  "btnPaperEnd", "btnTestPrint", "btnDiagPrint"}) {
        m_objWindow.Click(strButton);
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList()) << strButton;
    }
    EXPECT_EQ(Sent(8),
              (std::vector<std::string>{"{Z4;0|}", "{WT;1000,1|}", "{Z6;0|}", "{Z6;1|}", "{Z6;01|}",
                                        "{Z6;11|}", "{Z3;007600730105700010000|}", "{Z10|}"}));
}

TEST_F(FmMainSerialTest, ReadTakesLateAnswersInPieces) {
    StartPrinter({"--delay", "200", "--pieces", "3", "--gap", "5"});
    TeachPrinter();
    OpenPort();
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Sent(3), ReadRequests);
    MTaughtPrinter::ExpectPage(m_objWindow);
}

TEST_F(FmMainSerialTest, ASilentPrinterLeavesThePageAsItWas) {
    StartPrinter({"--silent"});
    TeachPrinter();
    OpenPort();
    const auto strBefore = m_objWindow.ShownFields();
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Sent(3), ReadRequests);
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    m_objWindow.Click("btnHeadCheck");
    EXPECT_EQ(Shown("lblHeadCheck"), "");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainSerialTest, AnAnswerBehindJunkIsTaken) {
    StartPrinter({"--junk-before", "--status", "14"});
    TeachPrinter();
    OpenPort();
    m_objWindow.Click("btnGetStatus");
    EXPECT_TRUE(WaitForShown("lblStatus", "NO RIBBON"));
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Shown("SeIpAddress4"), "78");
}

TEST_F(FmMainSerialTest, JunkLeavesThePageAsItWas) {
    StartPrinter({"--junk"});
    ExpectThePageToStay();
}

TEST_F(FmMainSerialTest, AnswersCutShortLeaveThePageAsItWas) {
    StartPrinter({"--cut", "5"});
    ExpectThePageToStay();
}

TEST_F(FmMainSerialTest, APortThatAnotherProgramHoldsIsTold) {
    StartPrinter();
    CQtPlatform objProgram(m_objDevices.path().toStdString());
    ISerialPort& objOther = objProgram.Interfaces().m_objSerialPort;
    objOther.SetSettings("9600,E,8,1");
    ASSERT_EQ(objOther.Open(), ISerialPort::Opened);
    m_objBoxes.Expect("Already Opened Port by other Application", MessageIcon::Exclamation);
    PressSetup();
    m_objBoxes.Verify();
    EXPECT_FALSE(m_objSerialPort.IsOpen());
    m_objWindow.Click("btnRead");  // a closed port: quietly nothing
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    objOther.Close();
    OpenPort();
}

TEST_F(FmMainSerialTest, ALineThatIsPulledOutEndsReadQuietlyAndSetupOpensItAgain) {
    StartPrinter({"--close-after", "1"});
    OpenPort();
    const auto strBefore = m_objWindow.ShownFields();
    m_objWindow.Click("btnGetStatus");
    EXPECT_TRUE(WaitForShown("lblStatus", "ON LINE"));
    ASSERT_TRUE(m_objPrinter.WaitForLine("port closed", PatienceMs));
    ASSERT_TRUE(
        CSimulatorProcess::WaitUntil([this] { return !m_objSerialPort.IsOpen(); }, PatienceMs));

    m_objWindow.Click("btnRead");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(Sent(1), std::vector<std::string>{"{WS|}"});

    OpenPort();
    m_objWindow.Click("btnHeadCheck");
    EXPECT_EQ(Shown("lblHeadCheck"), "ON LINE");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

}  // namespace
