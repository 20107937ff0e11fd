#include "tests/ui/CLineFixture.h"

#include <QAbstractEventDispatcher>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>

#include <cerrno>
#include <utility>

// How it stands with the link, and what is being done.

namespace {

using Texts = std::vector<std::string>;
using Connect = CFakeTcpClient::ConnectResult;

class FmMainStatusLineTest : public CLineFixture {
protected:
    QStatusBar& Line() { return *m_objWindow.Form().statusBar(); }
    QProgressBar& Bar() { return m_objWindow.Get<QProgressBar>("barDoing"); }

    void ExpectTimeOut() {
        m_objBoxes.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }

    /// The texts of the middle place while p_strButton works.
    Texts DoingOf(const char* p_strButton) {
        m_objWindow.BringToFront(p_strButton);
        const CNameLog objNames;
        m_objWindow.Click(p_strButton);
        return objNames.Of("lblDoing");
    }
};

TEST_F(FmMainStatusLineTest, AtTheStartNothingIsOpenAndNothingIsDone) {
    EXPECT_EQ(Link(), "COM1 closed");
    EXPECT_EQ(Doing(), "");
    EXPECT_EQ(Page(), "defaults, never read");
    EXPECT_FALSE(Bar().isVisible());
    EXPECT_EQ(Stop(), nullptr);
}

TEST_F(FmMainStatusLineTest, EachPlaceIsCalledByItsNameAndItsText) {
    EXPECT_EQ(m_objWindow.Get<QWidget>("lblLink").accessibleName(), "Link: COM1 closed");
    EXPECT_EQ(m_objWindow.Get<QWidget>("lblDoing").accessibleName(), "Doing");
    EXPECT_EQ(m_objWindow.Get<QWidget>("lblPage").accessibleName(), "Page: defaults, never read");
    EXPECT_EQ(Bar().accessibleName(), "Progress");
}

TEST_F(FmMainStatusLineTest, AChangeIsToldToAssistivePrograms) {
    const CNameLog objNames;
    Choose(Lan);
    EXPECT_EQ(objNames.Of("lblLink"), Texts{"Link: LAN not connected"});
    EXPECT_EQ(objNames.Of("lblDoing"), Texts{});
    Choose(Lan);
    EXPECT_EQ(objNames.Of("lblLink").size(), 3U) << "over COM, and back";
}

// The link.

class FmMainStatusLinkTest : public FmMainStatusLineTest {
protected:
    void OpeningFails(std::int32_t p_iResult, const DeviceRefusal& p_objRefusal = {}) {
        m_objPort.m_iOpenResult = p_iResult;
        m_objPort.m_objRefusal = p_objRefusal;
        SetUpLink();
    }

    void ConnectingFails(int p_iNumber) {
        m_objSocket.m_iConnectResult = Connect::Fails;
        m_objSocket.m_objConnectError.m_iNumber = p_iNumber;
        m_objBoxes.Expect("Number=" + std::to_string(p_iNumber) +
                          "  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\n"
                          "CancelDisplay=False");
        m_objBoxes.Expect("'LAN' Open Error !!", MessageIcon::Critical);
        SetUpLink();
    }

    void UsbIsNotReady(int p_iNumber) {
        m_objLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
        m_objLibrary.m_iNotReadyNumber = p_iNumber;
        m_objBoxes.Expect("USB Device not ready !!", MessageIcon::Exclamation);
        m_objWindow.Click("btnGetStatus");
    }
};

TEST_F(FmMainStatusLinkTest, OfTheSerialPort) {
    SetUpLink();
    EXPECT_EQ(Link(), "COM1 9600,E,8,1 open");
    m_objPort.GoAway();  // nobody has asked for anything
    EXPECT_EQ(Link(), "COM1: pulled out");
    SetUpLink();
    EXPECT_EQ(Link(), "COM1 9600,E,8,1 open");
    m_objBoxes.Expect("Already Opened Port by other Application", MessageIcon::Exclamation);
    OpeningFails(ISerialPort::AlreadyOpen);
    EXPECT_EQ(Link(), "COM1: held by another program");
    OpeningFails(ENOENT);
    EXPECT_EQ(Link(), "COM1: no such port");
    OpeningFails(EACCES, {"/dev/ttyUSB0", "dialout"});
    EXPECT_EQ(Link(), "COM1: no permission for /dev/ttyUSB0 (group dialout)");
}

TEST_F(FmMainStatusLinkTest, OfAPortThatIsClosedWhenSomethingIsSent) {
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(Link(), "COM1 closed");
}

TEST_F(FmMainStatusLinkTest, WhyAPortDidNotOpenStaysUntilItIsOpenedAgain) {
    m_objPort.m_iOpenResult = ENOENT;
    SetUpLink();
    for (const char* const strButton : {"btnRead", "btnGetStatus"}) {
        m_objWindow.Click(strButton);
        EXPECT_EQ(Link(), "COM1: no such port") << strButton;
    }
    m_objPort.m_iOpenResult = 0;
    SetUpLink();
    EXPECT_EQ(Link(), "COM1 9600,E,8,1 open");
}

TEST_F(FmMainStatusLinkTest, TheSerialPortIsTheOneOfSetup) {
    const CModalAnswer objAnswer("FmInterfaceSetup", [](QWidget& p_objDialog) {
        p_objDialog.findChild<QComboBox*>("cmbComPort")->setCurrentIndex(2);
        QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnSet"), Qt::LeftButton);
    });
    m_objPort.m_iOpenResult = ENOENT;
    m_objWindow.Click("btnSetup");
    EXPECT_EQ(Link(), "COM3: no such port");
}

TEST_F(FmMainStatusLinkTest, OfTheLan) {
    Choose(Lan);
    EXPECT_EQ(Link(), "LAN not connected");
    After(0, [&] { EXPECT_EQ(Link(), "LAN connecting to 192.168.10.20:8000 \u2026"); });
    m_objSocket.m_iConnectResult = Connect::Never;
    After(500, [&] { m_objSocket.ConnectNow(); });
    SetUpLink();
    EXPECT_EQ(Link(), "LAN connected to 192.168.10.20:8000");
    m_objSocket.PeerCloses();
    EXPECT_EQ(Link(), "LAN closed by the printer");
}

TEST_F(FmMainStatusLinkTest, OfALanThatDoesNotConnect) {
    Choose(Lan);
    for (const auto& [iNumber, strText] : std::vector<std::pair<int, const char*>>{
             {ECONNREFUSED, "LAN refused: 192.168.10.20:8000"},
             {EHOSTUNREACH, "LAN no route: 192.168.10.20:8000"},
             {ETIMEDOUT, "LAN timed out: 192.168.10.20:8000"}}) {
        // What stands there is right while the boxes stand.
        m_objBoxes.WhileShown([&, strText = strText](const auto&) { EXPECT_EQ(Link(), strText); });
        ConnectingFails(iNumber);
        m_objBoxes.Verify();
        EXPECT_EQ(Link(), strText);
    }
}

TEST_F(FmMainStatusLinkTest, OfUsb) {
    Choose(Usb);
    EXPECT_EQ(Link(), "USB");
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(Link(), "USB");
    for (const auto& [iNumber, strText] :
         std::vector<std::pair<int, const char*>>{{ENODEV, "USB: no printer"},
                                                  {EACCES, "USB: no permission for it (group lp)"},
                                                  {EBUSY, "USB: held by another program"}}) {
        UsbIsNotReady(iNumber);
        EXPECT_EQ(Link(), strText);
    }
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(Link(), "USB");
}

TEST_F(FmMainStatusLinkTest, EachInterfaceKeepsItsOwn) {
    Use(Com);
    Choose(Lan);
    EXPECT_EQ(Link(), "LAN not connected");
    Choose(Com);
    EXPECT_EQ(Link(), "COM1 9600,E,8,1 open");
}

TEST_F(FmMainStatusLinkTest, APortThatWasOpenedAnewInsideIsNotSaidToHaveFailed) {
    Use(Com);
    After(30, [&] { SetUpLink(); });
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(Link(), "COM1 9600,E,8,1 open");
}

// What is being done.

TEST_F(FmMainStatusLineTest, EachFlowCountsItsCommands) {
    Use(Lan);
    EXPECT_EQ(DoingOf("btnRead"), (Texts{"Doing: READ", "Doing: READ 1 of 3", "Doing: READ 2 of 3",
                                         "Doing: READ 3 of 3", "Doing: READ", "Doing"}));
    EXPECT_EQ(DoingOf("btnSet"), (Texts{"Doing: SET", "Doing: SET 1 of 2", "Doing: SET 2 of 2",
                                        "Doing: SET", "Doing"}));
    EXPECT_EQ(DoingOf("btnLanRead"), (Texts{"Doing: LAN READ", "Doing"}));
    EXPECT_EQ(DoingOf("btnLanSet"),
              (Texts{"Doing: LAN SET", "Doing: LAN SET 1 of 5", "Doing: LAN SET 2 of 5",
                     "Doing: LAN SET 3 of 5", "Doing: LAN SET 4 of 5", "Doing: LAN SET 5 of 5",
                     "Doing: LAN SET", "Doing"}));
}

TEST_F(FmMainStatusLineTest, EachServiceFunctionHasItsName) {
    Use(Lan);
    EXPECT_EQ(DoingOf("btnHeadCheck"), (Texts{"Doing: head check", "Doing"}));
    EXPECT_EQ(DoingOf("btnGetStatus"), (Texts{"Doing: GET STATUS", "Doing"}));
    EXPECT_EQ(DoingOf("btnRamClear"), (Texts{"Doing: RAM clear", "Doing"}));
    EXPECT_EQ(DoingOf("btnThresholdCalib"), (Texts{"Doing: threshold calibration", "Doing"}));
    EXPECT_EQ(DoingOf("btnReflect"), (Texts{"Doing: sensor adjustment, step 1", "Doing"}));
    EXPECT_EQ(DoingOf("btnTrans"), (Texts{"Doing: sensor adjustment, step 2", "Doing"}));
    EXPECT_EQ(DoingOf("btnPaperEnd"), (Texts{"Doing: sensor adjustment, step 3", "Doing"}));
    EXPECT_EQ(DoingOf("btnTestPrint"), (Texts{"Doing: test print", "Doing"}));
    EXPECT_EQ(DoingOf("btnDiagPrint"), (Texts{"Doing: diagnostic print", "Doing"}));
    EXPECT_EQ(DoingOf("btnSave"), Texts{}) << "is nothing with the printer";
}

TEST_F(FmMainStatusLineTest, TheBarShowsHowFarItIs) {
    Use(Lan);
    After(1200, [&] {
        EXPECT_EQ(Doing(), "READ 2 of 3");
        EXPECT_TRUE(Bar().isVisible());
        EXPECT_EQ(Bar().minimum(), 0);
        EXPECT_EQ(Bar().maximum(), 3);
        EXPECT_EQ(Bar().value(), 2);
    });
    m_objWindow.Click("btnRead");
    EXPECT_FALSE(Bar().isVisible());
    After(100, [&] { EXPECT_FALSE(Bar().isVisible()) << "one command has no bar"; });
    m_objWindow.Click("btnLanRead");
}

TEST_F(FmMainStatusLineTest, TheSecondsOfAWaitAreToldUntilTheBoxComes) {
    Use(Lan);
    Answer(CScriptedPrinter::KeepSilent);
    ExpectTimeOut();
    m_objBoxes.WhileShown([&](const auto&) { EXPECT_EQ(Doing(), "READ 1 of 3"); });
    const std::string strWaiting = "Doing: READ 1 of 3: waiting for the answer ";
    EXPECT_EQ(DoingOf("btnRead"),
              (Texts{"Doing: READ", "Doing: READ 1 of 3", strWaiting + "(1 s)",
                     strWaiting + "(2 s)", strWaiting + "(3 s)", strWaiting + "(4 s)",
                     strWaiting + "(5 s)", "Doing: READ 1 of 3", "Doing: READ", "Doing"}));
}

TEST_F(FmMainStatusLineTest, WhatIsStartedInsideOfLanSetStandsThereUntilItIsOver) {
    Use(Lan);
    m_objPrinter.m_iDelay = 2000;
    m_objWindow.BringToFront("btnLanSet");
    After(2500, [&] {
        EXPECT_EQ(Doing(), "LAN SET 2 of 5");
        After(500, [&] { EXPECT_EQ(Doing(), "GET STATUS"); });
        QTest::mouseClick(&m_objWindow.Button("btnGetStatus"), Qt::LeftButton);
        EXPECT_EQ(Doing(), "LAN SET 2 of 5");
    });
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(Doing(), "");
}

TEST_F(FmMainStatusLineTest, HasTheSameHeightWhateverItShows) {
    const int iHeight = Line().height();
    const auto Expect = [&] {
        QCoreApplication::processEvents();
        EXPECT_EQ(Line().height(), iHeight);
    };
    Choose(Lan);
    m_objSocket.m_iConnectResult = Connect::Never;
    After(500, [&] {
        EXPECT_NE(Stop(), nullptr);
        Expect();
        m_objSocket.ConnectNow();
    });
    SetUpLink();
    After(500, Expect);
    m_objWindow.Click("btnRead");
    Expect();
}

TEST_F(FmMainStatusLineTest, TheFirstSizeHasRoomForItBesideThePages) {
    auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    m_objWindow.Form().resize(1024, m_objWindow.Form().height());  // this screen is a narrow one
    for (int i = 0; i < objTabs.count(); ++i) {
        objTabs.setCurrentIndex(i);
        QCoreApplication::processEvents();
        const auto* const objArea = qobject_cast<QScrollArea*>(objTabs.widget(i));
        EXPECT_FALSE(objArea->verticalScrollBar()->isVisible()) << i;
    }
}

TEST_F(FmMainStatusLineTest, WhatIsTooLongIsCutAndStandsWholeInTheTooltip) {
    auto& lblLink = m_objWindow.Get<QLabel>("lblLink");
    EXPECT_EQ(lblLink.toolTip(), "");
    const int iLeast = m_objWindow.Form().minimumSizeHint().width();
    m_objPort.m_iOpenResult = EACCES;
    m_objPort.m_objRefusal = {"/dev/serial/by-id/usb-Acme_Serial_Adapter_A17-if00-port0",
                              "dialout"};
    SetUpLink();
    EXPECT_EQ(m_objWindow.Form().minimumSizeHint().width(), iLeast);
    m_objWindow.Form().resize(480, 320);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_objWindow.Form().width(), 480);
    EXPECT_EQ(lblLink.toolTip(), lblLink.text());
    EXPECT_LE(lblLink.mapTo(&m_objWindow.Form(), QPoint(lblLink.width(), 0)).x(), 480);
    m_objWindow.Form().resize(1600, 740);
    QCoreApplication::processEvents();
    EXPECT_EQ(lblLink.toolTip(), "");
}

TEST_F(FmMainStatusLineTest, NothingInItRunsByATimer) {
    const auto ExpectNoTimer = [&] {
        auto* const objDispatcher = QAbstractEventDispatcher::instance();
        QList<QObject*> objAll = Line().findChildren<QObject*>();
        objAll.append(&Line());
        for (QObject* const objPart : objAll) {
            EXPECT_TRUE(objDispatcher->registeredTimers(objPart).isEmpty())
                << objPart->objectName().toStdString();
        }
    };
    ExpectNoTimer();
    Use(Lan);
    Answer(CScriptedPrinter::KeepSilent);
    ExpectTimeOut();
    After(2500, ExpectNoTimer);
    m_objWindow.Click("btnRead");
}

}  // namespace
