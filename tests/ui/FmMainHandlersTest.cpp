#include "tests/ui/CFormFixture.h"
#include "tests/ui/CModalAnswer.h"

#include <QAbstractItemView>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>

#include <functional>
#include <set>
#include <vector>

namespace {

constexpr int Com = 0;
constexpr int Lan = 1;
constexpr int Usb = 2;

class FmMainHandlersTest : public CFormFixture {
protected:
    /// Everything of the window that can be enabled and is, by name.
    std::set<QString> Enabled() {
        std::set<QString> strEnabled;
        for (const auto* const objChild : m_objWindow.Form().findChildren<QWidget*>()) {
            if (!objChild->objectName().isEmpty() && objChild->isEnabled()) {
                strEnabled.insert(objChild->objectName());
            }
        }
        for (const auto* const objAction : m_objWindow.Form().findChildren<QAction*>()) {
            if (objAction->isEnabled()) {
                strEnabled.insert(objAction->objectName());
            }
        }
        return strEnabled;
    }

    std::vector<bool> EnabledCodes() {
        return {m_objWindow.Field("SeCode1").Enable(), m_objWindow.Field("SeCode2").Enable(),
                m_objWindow.Field("SeCode3").Enable()};
    }
};

TEST_F(FmMainHandlersTest, TheListChoosesTheInterfaceAndUsbHasNoSetup) {
    for (const int iPosition : {Usb, Com, Usb, Lan, Usb, Lan, Com}) {
        m_objWindow.Choose("cmbInterface", iPosition);
        EXPECT_EQ(m_objWindow.Form().Interface().GetActiveInterface(), iPosition);
        EXPECT_EQ(m_objWindow.Button("btnSetup").isEnabled(), iPosition != Usb);
    }
    EXPECT_EQ(m_objCalls.All(), std::vector<std::string>());
}

TEST_F(FmMainHandlersTest, AFlowEnablesSetupEvenForUsb) {
    m_objWindow.Choose("cmbInterface", Usb);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList("btnSetup"));
    m_objBoxes.Expect("USB Device not ready !!", MessageIcon::Exclamation);
    m_objWindow.Click("btnRead");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainHandlersTest, ChoosingUsbOnceMoreDisablesTheSetupThatAFlowHasEnabled) {
    m_objWindow.Choose("cmbInterface", Usb);
    m_objBoxes.Expect("USB Device not ready !!", MessageIcon::Exclamation);
    m_objWindow.Click("btnGetStatus");
    ASSERT_EQ(m_objWindow.DisabledButtons(), QStringList());
    QComboBox& cmb = m_objWindow.List("cmbInterface");
    QTest::keyClick(&cmb, Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(cmb.view()->isVisible());
    QTest::keyClick(cmb.view(), Qt::Key_Return);
    EXPECT_EQ(Shown("cmbInterface"), "USB");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList("btnSetup"));
}

TEST_F(FmMainHandlersTest, OnlyManualLetsTheCodesBeEdited) {
    const std::vector<bool> bNone{false, false, false};
    const std::vector<bool> bAll{true, true, true};
    EXPECT_EQ(EnabledCodes(), bNone);
    for (const int iPosition : {3, 0, 3, 1, 3, 2}) {
        m_objWindow.Choose("cmbCode", iPosition);
        EXPECT_EQ(EnabledCodes(), iPosition == 3 ? bAll : bNone) << iPosition;
    }
}

TEST_F(FmMainHandlersTest, ACodeThatIsDisabledTakesNoKeys) {
    m_objWindow.Type("SeCode1", "41");
    EXPECT_EQ(Shown("SeCode1"), "1B");
    m_objWindow.Choose("cmbCode", 3);
    m_objWindow.Type("SeCode1", "41");
    EXPECT_EQ(Shown("SeCode1"), "41");
}

TEST_F(FmMainHandlersTest, OnlyTheParameterClearHasADestination) {
    EXPECT_TRUE(m_objWindow.List("cmbDestination").isEnabled());
    m_objWindow.Choose("cmbRamClear", 1);
    EXPECT_FALSE(m_objWindow.List("cmbDestination").isEnabled());
    m_objWindow.Choose("cmbRamClear", 0);
    EXPECT_TRUE(m_objWindow.List("cmbDestination").isEnabled());
}

TEST_F(FmMainHandlersTest, AClickOnAnotherTabChecksWhatWasTyped) {
    QTabBar& objBar = *m_objWindow.Get<QTabWidget>("SSTab1").tabBar();
    const auto ClickTab = [&objBar](int p_iTab) {
        QTest::mouseClick(&objBar, Qt::LeftButton, {}, objBar.tabRect(p_iTab).center());
        EXPECT_EQ(objBar.currentIndex(), p_iTab);
    };
    m_objWindow.Type("SeFeedAdj", "12.345");
    ClickTab(1);
    EXPECT_EQ(Shown("SeFeedAdj"), "12.3");
    m_objWindow.Type("SeFeedAdj", "50.1");
    m_objBoxes.Expect("It is a value that exceeds the useful range. ");
    ClickTab(2);
    EXPECT_EQ(Shown("SeFeedAdj"), "12.3");
}

TEST_F(FmMainHandlersTest, AnotherTabNeverBringsTheFocusToAButton) {
    auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    QTabBar& objBar = *objTabs.tabBar();
    m_objWindow.List("cmbSpeed").setFocus();
    for (const int iTab : {1, 0, 1, 2, 0}) {
        QTest::mouseClick(&objBar, Qt::LeftButton, {}, objBar.tabRect(iTab).center());
        ASSERT_EQ(objTabs.currentIndex(), iTab);
        QWidget* const objFocus = QApplication::focusWidget();
        ASSERT_NE(objFocus, nullptr);
        EXPECT_EQ(qobject_cast<QPushButton*>(objFocus), nullptr)
            << objFocus->objectName().toStdString();
        // What the person does next on the page lies behind the tabs.
        if (iTab == 1) {
            EXPECT_TRUE(objBar.hasFocus());
            QTest::keyClick(&objBar, Qt::Key_Tab);
            EXPECT_TRUE(m_objWindow.Button("btnHeadCheck").hasFocus());
        } else {
            m_objWindow.List(iTab == 0 ? "cmbSpeed" : "cmbDhcp").setFocus();
        }
    }
}

TEST_F(FmMainHandlersTest, NoButtonStartsAnythingOverAFieldThatIsRefused) {
    m_objWindow.Choose("cmbInterface", Lan);
    ASSERT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    m_objCalls.Forget();
    for (const char* const strButton :
         {"btnGetStatus", "btnSetup", "btnLoad", "btnSave", "btnRead", "btnSet"}) {
        m_objWindow.Type("SeToneAdjT", "11");
        m_objBoxes.Expect("It is a value that exceeds the useful range. ");
        m_objWindow.Click(strButton);
        m_objBoxes.Verify();
        EXPECT_EQ(Shown("SeToneAdjT"), "0") << strButton;
    }
    EXPECT_EQ(m_objCalls.All(), std::vector<std::string>());
}

TEST_F(FmMainHandlersTest, AFieldThatWasLeftForTheMenuBarIsCheckedAsWell) {
    m_objWindow.Choose("cmbInterface", Lan);
    ASSERT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    m_objCalls.Forget();
    const std::function<void()> fnWaysOn[]{
        [this] { m_objWindow.Click("btnSet"); },
        [this] { QTest::mouseClick(&m_objWindow.Field("SeToneAdjD"), Qt::LeftButton); },
        [this] {
            QTabBar& objBar = *m_objWindow.Get<QTabWidget>("SSTab1").tabBar();
            QTest::mouseClick(&objBar, Qt::LeftButton, {}, objBar.tabRect(1).center());
        },
        [this] { QTest::keyClick(&m_objWindow.Form(), Qt::Key_Alt), m_objWindow.Click("btnSet"); },
    };
    for (const auto& fnGoOn : fnWaysOn) {
        m_objWindow.Type("SeToneAdjT", "11");
        QTest::keyClick(&m_objWindow.Form(), Qt::Key_Alt);
        ASSERT_TRUE(m_objWindow.Form().menuBar()->hasFocus());
        EXPECT_EQ(Shown("SeToneAdjT"), "11");
        m_objBoxes.Expect("It is a value that exceeds the useful range. ");
        fnGoOn();
        m_objBoxes.Verify();
        EXPECT_EQ(Shown("SeToneAdjT"), "0");
    }
    EXPECT_EQ(m_objCalls.All(), std::vector<std::string>());
}

TEST_F(FmMainHandlersTest, AnExchangeSwitchesExactlyTheActionButtons) {
    const QStringList& strButtons = CMainWindow::ActionButtons();
    ASSERT_EQ(strButtons.size(), 18);
    m_objWindow.Choose("cmbInterface", Lan);
    const std::set<QString> strBefore = Enabled();
    std::set<QString> strDuring;
    m_objBoxes.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    m_objBoxes.WhileShown([&](const auto&) { strDuring = Enabled(); });
    m_objWindow.Click("btnRead");
    std::set<QString> strSwitched;
    std::set_difference(strBefore.begin(), strBefore.end(), strDuring.begin(), strDuring.end(),
                        std::inserter(strSwitched, strSwitched.end()));
    EXPECT_EQ(strSwitched, std::set<QString>(strButtons.begin(), strButtons.end()));
    EXPECT_EQ(Enabled(), strBefore);
}

TEST_F(FmMainHandlersTest, TheFocusReturnsToTheButtonThatStartedAFlow) {
    m_objWindow.Button("btnRead").setFocus();
    QTest::keyClick(&m_objWindow.Button("btnRead"), Qt::Key_Space);
    EXPECT_TRUE(m_objWindow.Button("btnRead").hasFocus());
}

TEST_F(FmMainHandlersTest, TheMenusBearTheirCaptions) {
    EXPECT_EQ(m_objWindow.Get<QMenu>("mmFile").title(), "File(&F)");
    EXPECT_EQ(m_objWindow.Get<QMenu>("mmAbout").title(), "About(&A)");
    EXPECT_EQ(m_objWindow.Get<QAction>("smExit").text(), "Exit(&E)");
    EXPECT_EQ(m_objWindow.Get<QAction>("smAbout").text(), "About(&A)");
    EXPECT_EQ(m_objWindow.Get<QMenu>("mmFile").actions(),
              QList<QAction*>{&m_objWindow.Get<QAction>("smExit")});
    EXPECT_EQ(m_objWindow.Get<QMenu>("mmAbout").actions(),
              QList<QAction*>{&m_objWindow.Get<QAction>("smAbout")});
}

TEST_F(FmMainHandlersTest, AltFThenEClosesTheWindow) {
    QSignalSpy objClosed(&m_objWindow.Form(), &FmMain::Closed);
    QTest::keyClick(m_objWindow.Form().windowHandle(), Qt::Key_F, Qt::AltModifier);
    ASSERT_TRUE(m_objWindow.Get<QMenu>("mmFile").isVisible());
    QTest::keyClick(&m_objWindow.Get<QMenu>("mmFile"), Qt::Key_E);
    EXPECT_EQ(objClosed.count(), 1);
    EXPECT_FALSE(m_objWindow.Form().isVisible());
    EXPECT_TRUE(m_objEventLoop.IsClosing());
}

TEST_F(FmMainHandlersTest, TheAboutBoxIsModal) {
    int iTab = -1;
    const CModalAnswer objAnswer("FmAbout", [&](QWidget& p_objBox) {
        auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
        const QRect objSecond = objTabs.tabBar()->tabRect(1);
        const QPoint objPlace = objTabs.tabBar()->mapTo(&m_objWindow.Form(), objSecond.center());
        QTest::mouseClick(m_objWindow.Form().windowHandle(), Qt::LeftButton, {}, objPlace);
        iTab = objTabs.currentIndex();
        QTest::mouseClick(p_objBox.findChild<QPushButton*>("btnOk"), Qt::LeftButton);
    });
    QTest::keyClick(m_objWindow.Form().windowHandle(), Qt::Key_A, Qt::AltModifier);
    ASSERT_TRUE(m_objWindow.Get<QMenu>("mmAbout").isVisible());
    QTest::keyClick(&m_objWindow.Get<QMenu>("mmAbout"), Qt::Key_A);
    EXPECT_TRUE(objAnswer.Done());
    EXPECT_EQ(iTab, 0) << "a click reached the window behind";
}

TEST_F(FmMainHandlersTest, AfterClosingNothingIsSentAndNoBoxAppears) {
    m_objWindow.Choose("cmbInterface", Lan);
    EXPECT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    m_objCalls.Forget();
    m_objWindow.Form().close();
    m_objWindow.Click("btnRead");
    m_objWindow.Click("btnSet");
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(m_objCalls.All(), std::vector<std::string>());
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

}  // namespace
