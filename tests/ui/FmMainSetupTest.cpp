#include "tests/ui/CFormFixture.h"
#include "tests/ui/CModalAnswer.h"
#include "ui/FmInterfaceSetup.h"

#include <QGroupBox>
#include <QTest>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::string>;

constexpr int Com = 0;
constexpr int Lan = 1;
constexpr int Usb = 2;

/// An interface, and what SET in its setup does to the links.
struct Interface {
    const char* m_strName;
    int m_iPosition;
    Calls m_strCalls;
};

void PrintTo(const Interface& p_objInterface, std::ostream* p_objStream) {
    *p_objStream << p_objInterface.m_strName;
}

// The serial port is closed once more right before it is opened.
const std::vector<Interface> Interfaces{
    {"Com", Com, {"COM close", "LAN close", "USB close", "COM close", "COM open 1 9600,E,8,1"}},
    {"Lan", Lan, {"COM close", "LAN close", "USB close", "LAN connect 192.168.10.20:8000"}},
    {"Usb", Usb, {"COM close", "LAN close", "USB close", "USB open"}},
};

class FmMainSetupTest : public CFormFixture {
protected:
    /// Chooses the interface, and lets a flow enable Setup where the interface has disabled it.
    void Choose(int p_iInterface) {
        m_objWindow.Choose("cmbInterface", p_iInterface);
        if (p_iInterface == Usb) {
            m_objBoxes.Expect("USB Device not ready !!", MessageIcon::Exclamation);
            m_objWindow.Click("btnGetStatus");
            m_objBoxes.Verify();
        }
        ASSERT_EQ(m_objWindow.DisabledButtons(), QStringList());
        m_objCalls.Forget();
    }

    /// Presses Setup and deals with its dialog. False when none came.
    bool PressSetup(const std::function<void(QWidget&)>& p_fnAction) {
        const CModalAnswer objAnswer("FmInterfaceSetup", p_fnAction);
        m_objWindow.Click("btnSetup");
        m_objWindow.Form().activateWindow();
        return objAnswer.Done() && QTest::qWaitForWindowActive(&m_objWindow.Form());
    }

    static void Press(QWidget& p_objDialog, const char* p_strButton) {
        QTest::mouseClick(p_objDialog.findChild<QPushButton*>(p_strButton), Qt::LeftButton);
    }
    static void PressSet(QWidget& p_objDialog) { Press(p_objDialog, "btnSet"); }

    FmInterfaceSetup* Dialog() { return m_objWindow.Form().findChild<FmInterfaceSetup*>(); }
};

class FmMainSetupEachTest : public FmMainSetupTest,
                            public ::testing::WithParamInterface<Interface> {};

INSTANTIATE_TEST_SUITE_P(, FmMainSetupEachTest, ::testing::ValuesIn(Interfaces),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_P(FmMainSetupEachTest, SetClosesAllThreeLinksThenOpensTheChosenOne) {
    Choose(GetParam().m_iPosition);
    m_objUsbLibrary.m_bPlugged = true;
    EXPECT_TRUE(PressSetup([](QWidget& p_objDialog) {
        const bool bLan = GetParam().m_iPosition == Lan;
        EXPECT_EQ(p_objDialog.findChild<QGroupBox*>("FrLanSetup")->isEnabled(), bLan);
        EXPECT_EQ(p_objDialog.findChild<QGroupBox*>("FrRs232cSetup")->isEnabled(), !bLan);
        PressSet(p_objDialog);
    }));
    EXPECT_EQ(m_objCalls.All(), GetParam().m_strCalls);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_P(FmMainSetupEachTest, CancelEscapeAndTheCloseBoxTouchNoLink) {
    Choose(GetParam().m_iPosition);
    m_objUsbLibrary.m_bPlugged = true;
    ASSERT_TRUE(PressSetup(PressSet));  // something that could be closed
    m_objCalls.Forget();
    const std::vector<std::function<void(QWidget&)>> fnWays{
        [](QWidget& p_objDialog) { Press(p_objDialog, "btnCancel"); },
        [](QWidget& p_objDialog) { QTest::keyClick(&p_objDialog, Qt::Key_Escape); },
        [](QWidget& p_objDialog) { p_objDialog.close(); },
    };
    for (const auto& fnClose : fnWays) {
        EXPECT_TRUE(PressSetup(fnClose));
        EXPECT_EQ(m_objCalls.All(), Calls());
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }
}

TEST_P(FmMainSetupEachTest, TheDialogIsGoneBeforeTheFirstLinkIsTouched) {
    Choose(GetParam().m_iPosition);
    m_objUsbLibrary.m_bPlugged = true;
    m_objCalls.m_fnOnCall = [this] { EXPECT_EQ(Dialog(), nullptr) << m_objCalls.All().back(); };
    EXPECT_TRUE(PressSetup([this](QWidget& p_objDialog) {
        EXPECT_EQ(Dialog(), &p_objDialog);
        PressSet(p_objDialog);
    }));
    EXPECT_EQ(m_objCalls.All(), GetParam().m_strCalls);
    m_objCalls.m_fnOnCall = nullptr;
}

TEST_P(FmMainSetupEachTest, ASettingThatItCannotShowLeavesSetupWithoutAnyEffect) {
    Choose(GetParam().m_iPosition);
    constexpr int iNoSuchParity = 3;
    m_objWindow.Form().Interface().m_objParityIndex->SetValue(iNoSuchParity);
    const CModalAnswer objAnswer("FmInterfaceSetup", PressSet);
    m_objWindow.Click("btnSetup");
    EXPECT_FALSE(objAnswer.Done());
    EXPECT_EQ(m_objCalls.All(), Calls());
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainSetupTest, TheLinkIsOpenedWithWhatWasSet) {
    Choose(Lan);
    EXPECT_TRUE(m_objWindow.SetUp("10.1.2.3"));
    EXPECT_EQ(m_objCalls.All().back(), "LAN connect 10.1.2.3:8000");
    Choose(Com);
    EXPECT_TRUE(PressSetup([](QWidget& p_objDialog) {
        auto& cmbComPort = *p_objDialog.findChild<QComboBox*>("cmbComPort");
        cmbComPort.setFocus();
        QTest::keyClick(&cmbComPort, Qt::Key_End);
        PressSet(p_objDialog);
    }));
    EXPECT_EQ(m_objCalls.All().back(), "COM open 9 9600,E,8,1");
}

TEST_F(FmMainSetupTest, CancelKeepsTheSettings) {
    Choose(Lan);
    EXPECT_TRUE(m_objWindow.SetUp("10.1.2.3", true));
    EXPECT_EQ(m_objWindow.Form().Interface().GetIpAddress(), "192.168.10.20");
}

TEST_F(FmMainSetupTest, APrinterThatIsNotOnUsbIsToldWhenTheDialogIsGone) {
    Choose(Usb);
    m_objBoxes.Expect("'USB' Open Error !!", MessageIcon::Critical);
    m_objBoxes.WhileShown([this](const auto&) { EXPECT_EQ(Dialog(), nullptr); });
    EXPECT_TRUE(PressSetup(PressSet));
    EXPECT_EQ(m_objCalls.All(),
              (Calls{"COM close", "LAN close", "USB close", "USB open", "USB close"}));
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

/// One serial port: what the second entry of the list stands for.
class COnePort : public ISerialPortLister {
public:
    std::vector<CSerialPortEntry> SerialPorts() override {
        CSerialPortEntry objEntry;
        objEntry.m_strDevice = "/dev/ttyUSB1";
        objEntry.m_iComNumbers = {2};
        objEntry.m_strDescription = "FTDI adapter";
        return {objEntry};
    }
};

TEST_F(FmMainSetupTest, ItsPortsTellWhichDevicesTheyAre) {
    COnePort objPorts;
    CMainWindow objWindow(
        {{m_objEventLoop, m_objClock, m_objNetwork, m_objSerialPort, m_objUsbLibrary},
         {m_objBoxes, m_objFileDialog, m_objFileStore, QDir::tempPath().toStdString()},
         &objPorts});
    ASSERT_TRUE(objWindow.Open());
    QStringList strTold;
    const CModalAnswer objAnswer("FmInterfaceSetup", [&](QWidget& p_objDialog) {
        const auto& cmbComPort = *p_objDialog.findChild<QComboBox*>("cmbComPort");
        for (const int iEntry : {0, 1}) {
            strTold << cmbComPort.itemData(iEntry, Qt::ToolTipRole).toString();
        }
        QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnCancel"), Qt::LeftButton);
    });
    objWindow.Click("btnSetup");
    ASSERT_TRUE(objAnswer.Done());
    EXPECT_EQ(strTold, (QStringList{"no such port", "/dev/ttyUSB1: FTDI adapter"}));
}

}  // namespace
