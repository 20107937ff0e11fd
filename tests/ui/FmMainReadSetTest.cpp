#include "tests/golden/MGolden.h"
#include "tests/platform_qt/CRefusedPort.h"
#include "tests/ui/CPrinterFixture.h"

#include <QCoreApplication>
#include <QTest>

#include <utility>
#include <vector>

namespace {

constexpr int Com = 0;
constexpr int Lan = 1;
constexpr int Usb = 2;

const std::vector<std::string> ReadRequests{"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"};

using FmMainReadSetTest = CPrinterFixture;

/// Notes when the action buttons are disabled and enabled.
class CSwitchLog : public QObject {
public:
    /// A button, and whether it became enabled.
    using Switched = std::pair<QString, bool>;

    explicit CSwitchLog(CMainWindow& p_objWindow) {
        for (const QString& strName : CMainWindow::ActionButtons()) {
            p_objWindow.Button(strName).installEventFilter(this);
        }
    }

    /// What has become of one button, each time: whether it is enabled.
    [[nodiscard]] std::vector<bool> Of(const QString& p_strName) const {
        std::vector<bool> bEnabled;
        for (const auto& [strName, bBecame] : m_objAll) {
            if (strName == p_strName) {
                bEnabled.push_back(bBecame);
            }
        }
        return bEnabled;
    }

    /// All of it, in the order in which it happened.
    [[nodiscard]] const std::vector<Switched>& All() const { return m_objAll; }

    bool eventFilter(QObject* p_objButton, QEvent* p_objEvent) override {
        if (p_objEvent->type() == QEvent::EnabledChange) {
            m_objAll.emplace_back(p_objButton->objectName(),
                                  qobject_cast<QWidget*>(p_objButton)->isEnabled());
        }
        return false;
    }

private:
    std::vector<Switched> m_objAll;
};

/// Every action button, in the order in which they are switched.
std::vector<CSwitchLog::Switched> AllSwitched(bool p_bEnabled) {
    std::vector<CSwitchLog::Switched> objAll;
    for (const QString& strName : CMainWindow::ActionButtons()) {
        objAll.emplace_back(strName, p_bEnabled);
    }
    return objAll;
}

TEST_F(FmMainReadSetTest, ReadAsksForThreeGroupsASecondApartAndFillsThePage) {
    StartPrinter();
    TeachPrinter();
    ConnectToPrinter();
    WatchArrivals();
    QElapsedTimer objTime;
    objTime.start();
    m_objWindow.Click("btnRead");
    EXPECT_GE(objTime.elapsed(), 2950) << "a second after each of the three";
    EXPECT_EQ(Sent(), ReadRequests);
    ASSERT_EQ(Gaps().size(), 2U);
    for (const qint64 iGap : Gaps()) {
        EXPECT_GE(iGap, 950);
        EXPECT_LE(iGap, 2000);
    }
    MTaughtPrinter::ExpectPage(m_objWindow);
    EXPECT_TRUE(m_objWindow.Field("SeCode1").Enable()) << "MANUAL was read";
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_TRUE(m_objBoxes.Shown().empty());

    m_objWindow.Click("btnSet");
    const std::vector<std::string> strSent = Sent();
    ASSERT_EQ(strSent.size(), 5U);
    EXPECT_EQ(strSent[3], MGolden::With(MTaughtPrinter::Parameters, {{"StopBit", "0"}}))
        << "what was read, with the stop bit of the page";
    EXPECT_EQ(strSent[4], MTaughtPrinter::Adjustments);
}

TEST_F(FmMainReadSetTest, SetWithTheDefaultsSendsTheTwoCommands) {
    StartPrinter();
    ConnectToPrinter();
    m_objWindow.Click("btnSet");
    EXPECT_EQ(Sent(), (std::vector<std::string>{DefaultParameters, DefaultAdjustments}));
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_EQ(Shown("lblStatus"), "ON LINE");
}

TEST_F(FmMainReadSetTest, ReadShowsWhatSetHasWritten) {
    StartPrinter();
    ConnectToPrinter();
    m_objWindow.Choose("cmbFontCode", 1);  // numbered differently in the two directions
    m_objWindow.Choose("cmbSpeed", 3);
    m_objWindow.Choose("cmbRibbonNearEnd", 2);
    m_objWindow.Type("SeFowardPosition", "-2.5");
    m_objWindow.Type("SeEuroCode", "a4");
    m_objWindow.Type("SeFeedAdj", "-50");
    m_objWindow.Type("SeXAdj", "99.5");
    m_objWindow.Type("SeRbnAdjBk", "-7");
    m_objWindow.Type("SeThresholdT", "3.3");
    m_objWindow.Click("btnSet");  // while the last one still has the focus
    EXPECT_EQ(Sent(), (std::vector<std::string>{
                          MGolden::With(MGolden::Parameters, {{"FontCode", "1"},
                                                              {"CommunicationSpeed", "3"},
                                                              {"AutoForwardDirection", "-"},
                                                              {"AutoForwardAdjustment", "25"},
                                                              {"EuroCode", "A4"},
                                                              {"RibbonNearEnd", "2"}}),
                          MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"},
                                                               {"FeedAdjustment", "500"},
                                                               {"XCoordinateAdjustment", "995"},
                                                               {"RibbonMotorAdjustment_B", "07"},
                                                               {"ThresholdAdjustment_T", "33"}})}));
    const auto strWritten = m_objWindow.ShownFields();

    m_objWindow.Choose("cmbFontCode", 7);
    m_objWindow.Choose("cmbSpeed", 0);
    m_objWindow.Choose("cmbRibbonNearEnd", 1);
    m_objWindow.Type("SeFowardPosition", "1");
    m_objWindow.Type("SeEuroCode", "20");
    m_objWindow.Type("SeFeedAdj", "1");
    m_objWindow.Type("SeXAdj", "1");
    m_objWindow.Type("SeRbnAdjBk", "-1");
    m_objWindow.Type("SeThresholdT", "1");
    m_objWindow.Click("btnRead");
    EXPECT_EQ(m_objWindow.ShownFields(), strWritten);
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(FmMainReadSetTest, TheKeyboardAloneDoesIt) {
    StartPrinter();
    ConnectToPrinter();
    m_objWindow.Button("btnSet").setFocus();
    QTest::keyClick(&m_objWindow.Button("btnSet"), Qt::Key_Space);
    EXPECT_EQ(Sent(), (std::vector<std::string>{DefaultParameters, DefaultAdjustments}));
    EXPECT_EQ(m_objWindow.Form().focusWidget(), &m_objWindow.Button("btnSet"));
}

TEST_F(FmMainReadSetTest, FurtherClicksDuringAFlowDoNothing) {
    StartPrinter();
    ConnectToPrinter();
    int iClicks = 0;
    QTimer objImpatience;
    QObject::connect(&objImpatience, &QTimer::timeout, [&] {
        EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
        for (const QString& strName : CMainWindow::ActionButtons()) {
            QTest::mouseClick(&m_objWindow.Button(strName), Qt::LeftButton);
            QTest::keyClick(&m_objWindow.Form(), Qt::Key_Space);
        }
        ++iClicks;
    });
    objImpatience.start(150);
    m_objWindow.Click("btnRead");
    objImpatience.stop();
    EXPECT_GE(iClicks, 5);
    EXPECT_EQ(Sent(), ReadRequests);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainReadSetTest, ChoosingInterfacesOnTheWayDoesNotTouchTheButtons) {
    StartPrinter({"--delay", "300"});
    ConnectToPrinter();
    const CSwitchLog objSwitches(m_objWindow);
    const auto Press = [this](Qt::Key p_iKey, int p_iInterface) {
        QTest::keyClick(&m_objWindow.List("cmbInterface"), p_iKey);
        EXPECT_EQ(m_objWindow.Form().Interface().GetActiveInterface(), p_iInterface);
        EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
    };
    QTimer::singleShot(100, [&] {  // while the first answer is awaited
        Press(Qt::Key_End, Usb);
        Press(Qt::Key_Home, Com);
        Press(Qt::Key_Down, Lan);
    });
    QTimer::singleShot(700, [&] {  // in the pause behind it
        Press(Qt::Key_Home, Com);
        Press(Qt::Key_End, Usb);
    });
    m_objBoxes.Expect("USB Device not ready !!", MessageIcon::Exclamation);
    m_objWindow.Click("btnRead");
    m_objBoxes.Verify();
    EXPECT_EQ(Sent(), std::vector<std::string>{ReadRequests.front()});
    for (const QString& strName : CMainWindow::ActionButtons()) {
        EXPECT_EQ(objSwitches.Of(strName), (std::vector<bool>{false, true}))
            << strName.toStdString();
    }
}

TEST_F(FmMainReadSetTest, TheButtonsAreDisabledAndEnabledInTheirOrderWhicheverHasTheFocus) {
    m_objWindow.Choose("cmbInterface", Lan);
    for (const char* strButton : {"btnRead", "btnSet", "btnPaperEnd", "btnLanRead"}) {
        SCOPED_TRACE(strButton);
        m_objWindow.BringToFront(strButton);
        m_objWindow.Button(strButton).setFocus();
        const CSwitchLog objSwitches(m_objWindow);
        // The command of "PAPER END" fails without a word.
        std::vector<CSwitchLog::Switched> objExpected = AllSwitched(false);
        if (QString(strButton) != "btnPaperEnd") {
            ExpectSendErrorBox();
            m_objBoxes.WhileShown(
                [&](const auto&) { EXPECT_EQ(objSwitches.All(), AllSwitched(false)); });
        }
        QTest::keyClick(&m_objWindow.Button(strButton), Qt::Key_Space);
        m_objBoxes.WhileShown(nullptr);
        m_objBoxes.Verify();
        EXPECT_TRUE(m_objWindow.Button(strButton).hasFocus());
        for (const auto& objSwitched : AllSwitched(true)) {
            objExpected.push_back(objSwitched);
        }
        EXPECT_EQ(objSwitches.All(), objExpected);
    }
}

TEST_F(FmMainReadSetTest, TheFocusDoesNotReturnToAButtonThatIsOutOfSight) {
    m_objWindow.BringToFront("btnPaperEnd");
    m_objWindow.Button("btnPaperEnd").setFocus();
    auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    QTimer::singleShot(100, [&] {  // in the second that it takes
        ASSERT_FALSE(m_objWindow.Button("btnPaperEnd").isEnabled());
        QTest::mouseClick(objTabs.tabBar(), Qt::LeftButton, {},
                          objTabs.tabBar()->tabRect(0).center());
    });
    QTest::keyClick(&m_objWindow.Button("btnPaperEnd"), Qt::Key_Space);
    EXPECT_EQ(objTabs.currentIndex(), 0);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_FALSE(m_objWindow.Button("btnPaperEnd").hasFocus());
}

TEST_F(FmMainReadSetTest, SetStopsAtATextOutsideTheRange) {
    StartPrinter();
    ConnectToPrinter();
    m_objWindow.Type("SeFeedAdj", "50.1");
    m_objBoxes.Expect("It is a value that exceeds the useful range. ");
    m_objWindow.Click("btnSet");
    EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    m_objWindow.Click("btnGetStatus");  // whatever had been sent would stand before this
    EXPECT_EQ(Sent(), std::vector<std::string>{"{WS|}"});
}

TEST_F(FmMainReadSetTest, SetInAWindowThatTheToolkitTakesForInactiveSendsNothingUnchecked) {
    StartPrinter();
    ConnectToPrinter();
    QWidget objFront;
    objFront.show();
    objFront.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&objFront));
    m_objWindow.Type("SeToneAdjT", "12345");
    m_objWindow.Type("SeEuroCode", "7fff");
    m_objWindow.Type("SeFeedAdj", "1.5");
    m_objWindow.Type("SeCutAdj", "abc");
    for (int i = 0; i < 2; ++i) {
        m_objBoxes.Expect("It is a value that exceeds the useful range. ");
        m_objWindow.Click("btnSet");
        m_objBoxes.Verify();
    }
    m_objWindow.Click("btnSet");
    EXPECT_EQ(Sent(), (std::vector<std::string>{
                          DefaultParameters,
                          MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "015"}})}));
}

/// Types into a field while READ runs, so that the answer comes under it.
class FmMainReadOverTypingTest : public FmMainReadSetTest {
protected:
    void ReadOver(const char* p_strField, const char* p_strText) {
        ConnectToPrinter();
        m_objWindow.Choose("cmbCode", 3);
        QTimer::singleShot(200, [=, this] {
            m_objWindow.Type(p_strField, p_strText);
            EXPECT_EQ(Shown(p_strField), p_strText);
            EXPECT_TRUE(m_objWindow.Field(p_strField).hasFocus());
            EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
        });
        m_objWindow.Click("btnRead");
        EXPECT_TRUE(m_objBoxes.Shown().empty());
    }
};

TEST_F(FmMainReadOverTypingTest, ACodeThatIsDisabledByTheAnswerIsNotChecked) {
    StartPrinter();
    ReadOver("SeCode1", "fff");
    EXPECT_EQ(Shown("cmbCode"), "AUTO");
    EXPECT_FALSE(m_objWindow.Field("SeCode1").Enable());
    EXPECT_EQ(Shown("SeCode1"), "1B");
}

TEST_F(FmMainReadOverTypingTest, ACodeThatIsSetByTheAnswerIsNotChecked) {
    StartPrinter();
    TeachPrinter();
    ReadOver("SeCode1", "fff");
    EXPECT_TRUE(m_objWindow.Field("SeCode1").Enable());
    MTaughtPrinter::ExpectPage(m_objWindow);
    m_objWindow.List("cmbSpeed").setFocus();
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(FmMainReadSetTest, GetStatusShowsTheStatus) {
    StartPrinter({"--status", "14"});
    ConnectToPrinter();
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(Sent(), std::vector<std::string>{"{WS|}"});
    EXPECT_EQ(Shown("lblStatus"), "NO RIBBON");
}

TEST_F(FmMainReadSetTest, NothingListensThereIsToldTwice) {
    const CRefusedPort objPort;
    m_objWindow.Form().Interface().m_objSocketPort->SetValue(objPort.Number());
    m_objBoxes.Expect("Number=111  Connection refused\r\nScode=0\r\nSource=\r\nHelpFile=\r\n"
                      "HelpContext=0\r\nCancelDisplay=False");
    m_objBoxes.Expect("'LAN' Open Error !!", MessageIcon::Critical);
    m_objBoxes.WhileShown([this](const auto&) {
        EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
    });
    ConnectToPrinter();
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainReadSetTest, WithoutSetupNothingCanBeSent) {
    m_objWindow.Choose("cmbInterface", Lan);
    const auto strBefore = m_objWindow.ShownFields();
    for (const char* strButton : {"btnRead", "btnSet", "btnLanRead", "btnLanSet", "btnGetStatus"}) {
        ExpectSendErrorBox();
        m_objWindow.Click(strButton);
        m_objBoxes.Verify();
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList()) << strButton;
    }
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
}

TEST_F(FmMainReadSetTest, OtherInterfacesWithoutAPrinterLeaveTheLanAlone) {
    StartPrinter();
    ConnectToPrinter();
    const auto strBefore = m_objWindow.ShownFields();
    for (const int iInterface : {Com, Usb}) {
        m_objWindow.Choose("cmbInterface", iInterface);
        for (const char* strButton : {"btnRead", "btnSet"}) {
            if (iInterface == Usb) {
                m_objBoxes.Expect("USB Device not ready !!", MessageIcon::Exclamation);
            }
            m_objWindow.Click(strButton);
        }
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    m_objWindow.Choose("cmbInterface", Lan);
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(Sent(), std::vector<std::string>{"{WS|}"});
}

TEST_F(FmMainReadSetTest, SetupConnectsAnewAfterThePrinterHasClosed) {
    StartPrinter({"--close-after", "2"});
    ConnectToPrinter();
    m_objWindow.Click("btnSet");
    EXPECT_TRUE(m_objPrinter.WaitForLine("connection ended", PatienceMs));
    QCoreApplication::processEvents();
    ExpectSendErrorBox();
    m_objWindow.Click("btnSet");
    m_objBoxes.Verify();
    EXPECT_EQ(Sent().size(), 2U);
    ConnectToPrinter();
    m_objWindow.Click("btnSet");
    EXPECT_EQ(Sent().size(), 4U);
}

TEST_F(FmMainReadSetTest, APrinterThatClosesAtOnceIsNotConnected) {
    StartPrinter({"--close-after", "0"});
    ConnectToPrinter();
    EXPECT_TRUE(m_objPrinter.WaitForLine("connection ended", PatienceMs));
    QCoreApplication::processEvents();
    for (const char* strButton : {"btnRead", "btnSet"}) {
        ExpectSendErrorBox();
        m_objWindow.Click(strButton);
        m_objBoxes.Verify();
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }
    EXPECT_EQ(Sent(), std::vector<std::string>());
}

TEST_F(FmMainReadSetTest, LanSetSendsItsFiveCommandsAndLanReadShowsThem) {
    StartPrinter();
    ConnectToPrinter();
    m_objWindow.Type("SeIpAddress4", "77");
    m_objWindow.Type("SeSubNet4", "128");
    m_objWindow.Type("SeGateway1", "10");
    m_objWindow.Type("SeSocetPort", "9100");
    m_objWindow.Choose("cmbDhcp", 1);
    m_objWindow.Type("txtDhcpName", "label printer 01");
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(Sent(), (std::vector<std::string>{
                          MGolden::With(MGolden::IpAddress, {{"IpAddress4", "077"}}),
                          MGolden::With(MGolden::Gateway, {{"Gateway1", "010"}}),
                          MGolden::With(MGolden::SubnetMask, {{"SubnetMask4", "128"}}),
                          MGolden::With(MGolden::SocketPort, {{"SocketPortNumber", "09100"}}),
                          MGolden::With(MGolden::Dhcp, {{"DhcpSetting", "1"},
                                                        {"DhcpClientHost", "label printer 01"}})}));
    const auto strWritten = m_objWindow.ShownFields();
    m_objWindow.Type("SeIpAddress4", "1");
    m_objWindow.Type("SeSubNet4", "0");
    m_objWindow.Type("SeGateway1", "0");
    m_objWindow.Type("SeSocetPort", "1");
    m_objWindow.Choose("cmbDhcp", 0);
    m_objWindow.Type("txtDhcpName", "");
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Sent().back(), "{Z5;3|}");
    EXPECT_EQ(m_objWindow.ShownFields(), strWritten);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

}  // namespace
