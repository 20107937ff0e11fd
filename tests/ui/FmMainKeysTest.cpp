#include "tests/platform_widgets/CModalPerson.h"
#include "tests/ui/CFormFixture.h"
#include "tests/ui/CModalAnswer.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <map>
#include <vector>

namespace {

/// The window without a mouse.
class FmMainKeysTest : public CFormFixture {
protected:
    static constexpr int Lan = 1;

    QTabWidget& Tabs() { return m_objWindow.Get<QTabWidget>("SSTab1"); }
    QWidget* Focus() { return m_objWindow.Form().focusWidget(); }

    /// Types a key where the focus is.
    void Key(Qt::Key p_iKey, Qt::KeyboardModifiers p_iModifiers = {}) {
        QTest::keyClick(m_objWindow.Form().windowHandle(), p_iKey, p_iModifiers);
    }

    /// What READ does first in a window that no link is open in.
    void ExpectSendError() { m_objBoxes.Expect("'LAN' Send Error !!", MessageIcon::Exclamation); }
};

TEST_F(FmMainKeysTest, TabsChangeFromEverywhere) {
    for (const char* strFrom :
         {"cmbInterface", "btnGetStatus", "cmbSpeed", "SeFeedAdj", "btnSet", "cmbRamClear",
          "btnReflect", "SeIssueCount", "SeGateway2", "txtDhcpName", "btnLanSet"}) {
        SCOPED_TRACE(strFrom);
        const auto ExpectToReach = [&](Qt::Key p_iKey, Qt::KeyboardModifiers p_iModifiers,
                                       int p_iTab, bool p_bRelative) {
            m_objWindow.BringToFront(strFrom);
            const int iBefore = Tabs().currentIndex();
            m_objWindow.Get<QWidget>(strFrom).setFocus(Qt::TabFocusReason);
            const QString strShown = Shown("cmbSpeed");
            Key(p_iKey, p_iModifiers);
            EXPECT_EQ(Tabs().currentIndex(), p_bRelative ? (iBefore + p_iTab + 3) % 3 : p_iTab);
            EXPECT_EQ(Shown("cmbSpeed"), strShown);
        };
        ExpectToReach(Qt::Key_Tab, Qt::ControlModifier, 1, true);
        ExpectToReach(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, -1, true);
        ExpectToReach(Qt::Key_PageDown, Qt::ControlModifier, 1, true);
        ExpectToReach(Qt::Key_PageUp, Qt::ControlModifier, -1, true);
        ExpectToReach(Qt::Key_1, Qt::AltModifier, 0, false);
        ExpectToReach(Qt::Key_2, Qt::AltModifier, 1, false);
        ExpectToReach(Qt::Key_3, Qt::AltModifier, 2, false);
    }
}

TEST_F(FmMainKeysTest, AltWithANumberLeavesTheMenuBarAlone) {
    QWindow* const objWindow = m_objWindow.Form().windowHandle();
    m_objWindow.Field("SeFeedAdj").setFocus(Qt::TabFocusReason);
    QTest::keyPress(objWindow, Qt::Key_Alt, Qt::AltModifier);
    QTest::keyPress(objWindow, Qt::Key_2, Qt::AltModifier);
    QTest::keyRelease(objWindow, Qt::Key_2, Qt::AltModifier);
    QTest::keyRelease(objWindow, Qt::Key_Alt);
    EXPECT_EQ(Tabs().currentIndex(), 1);
    EXPECT_FALSE(m_objWindow.Form().menuBar()->hasFocus());
}

TEST_F(FmMainKeysTest, AKeyForTabsGivesBackWhatTheMenuBarHasTaken) {
    QWindow* const objWindow = m_objWindow.Form().windowHandle();
    m_objWindow.List("cmbInterface").setFocus(Qt::TabFocusReason);
    QTest::keyPress(objWindow, Qt::Key_Alt, Qt::AltModifier);
    QTest::keyRelease(objWindow, Qt::Key_Alt);
    ASSERT_TRUE(m_objWindow.Form().menuBar()->hasFocus());
    QTest::keyPress(objWindow, Qt::Key_3, Qt::AltModifier);
    EXPECT_EQ(Tabs().currentIndex(), 2);
    EXPECT_TRUE(m_objWindow.List("cmbInterface").hasFocus());
}

TEST_F(FmMainKeysTest, AnOpenListIsClosedByAKeyForTabs) {
    QComboBox& cmb = m_objWindow.List("cmbSpeed");
    cmb.setFocus();
    cmb.showPopup();
    ASSERT_TRUE(cmb.view()->isVisible());
    QTest::keyClick(cmb.view(), Qt::Key_2, Qt::AltModifier);
    EXPECT_EQ(Tabs().currentIndex(), 1);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    cmb.hidePopup();
}

TEST_F(FmMainKeysTest, ReadLoadAndSaveHaveKeysOnTheirPages) {
    struct Keyed {
        Qt::Key m_iKey;
        Qt::KeyboardModifiers m_iModifiers;
        std::vector<const char*> m_strButtons;  ///< of each tab; null: none
        const char* m_strShown;
    };
    const std::vector<Keyed> objKeys{
        {Qt::Key_F5, {}, {"btnRead", nullptr, "btnLanRead"}, "F5"},
        {Qt::Key_O, Qt::ControlModifier, {"btnLoad", nullptr, "btnLanLoad"}, "Ctrl+O"},
        {Qt::Key_S, Qt::ControlModifier, {"btnSave", nullptr, "btnLanSave"}, "Ctrl+S"},
    };
    m_objWindow.Choose("cmbInterface", Lan);
    for (const Keyed& objKey : objKeys) {
        for (int iTab = 0; iTab < 3; ++iTab) {
            SCOPED_TRACE(std::string(objKey.m_strShown) + " on tab " + std::to_string(iTab));
            Tabs().setCurrentIndex(iTab);
            std::map<QString, int> iClicks;
            for (const QString& strName : CMainWindow::ActionButtons()) {
                QObject::connect(&m_objWindow.Button(strName), &QPushButton::clicked,
                                 &m_objWindow.Button(strName),
                                 [&iClicks, strName] { ++iClicks[strName]; });
            }
            const CModalPerson objPerson([](QWidget& p_objDialog) { p_objDialog.close(); });
            const char* const strButton = objKey.m_strButtons[static_cast<std::size_t>(iTab)];
            if (strButton != nullptr && objKey.m_iKey == Qt::Key_F5) {
                ExpectSendError();
            }
            Key(objKey.m_iKey, objKey.m_iModifiers);
            m_objWindow.Form().activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
            m_objBoxes.Verify();
            for (const QString& strName : CMainWindow::ActionButtons()) {
                m_objWindow.Button(strName).disconnect(&m_objWindow.Button(strName));
                EXPECT_EQ(iClicks[strName], strName == strButton ? 1 : 0) << strName.toStdString();
            }
            if (strButton != nullptr) {
                EXPECT_TRUE(m_objWindow.Button(strButton).toolTip().contains(objKey.m_strShown));
            }
        }
    }
}

TEST_F(FmMainKeysTest, AKeyDoesNothingWhileItsButtonIsDisabled) {
    m_objWindow.Button("btnRead").setEnabled(false);
    const QSignalSpy objClicks(&m_objWindow.Button("btnRead"), &QPushButton::clicked);
    Key(Qt::Key_F5);
    EXPECT_EQ(objClicks.size(), 0);
}

TEST_F(FmMainKeysTest, NoButtonThatSendsHasAKey) {
    for (const QString& strName : CMainWindow::ActionButtons()) {
        const QPushButton& btn = m_objWindow.Button(strName);
        EXPECT_TRUE(btn.shortcut().isEmpty()) << strName.toStdString();
        if (btn.text() == "SEND" || btn.text() == "SET") {
            EXPECT_EQ(btn.toolTip(), "") << strName.toStdString();
        }
    }
}

TEST_F(FmMainKeysTest, TheTabsTellTheirKeys) {
    for (int i = 0; i < Tabs().count(); ++i) {
        EXPECT_EQ(Tabs().tabToolTip(i),
                  QString("Alt+%1; the next page: Ctrl+Tab, Ctrl+PgDown").arg(i + 1));
    }
}

TEST_F(FmMainKeysTest, ReturnAndEnterPressTheButtonThatHasTheFocus) {
    for (const QString& strName : CMainWindow::ActionButtons()) {
        SCOPED_TRACE(strName.toStdString());
        m_objWindow.BringToFront(strName);
        QPushButton& btn = m_objWindow.Button(strName);
        btn.disconnect(&m_objWindow.Form());  // nothing is started
        btn.setFocus(Qt::TabFocusReason);
        const QSignalSpy objClicks(&btn, &QPushButton::clicked);
        Key(Qt::Key_Return);
        Key(Qt::Key_Enter, Qt::KeypadModifier);
        EXPECT_EQ(objClicks.size(), 2);
        QKeyEvent objHeld(QEvent::KeyPress, Qt::Key_Return, {}, "\r", true);
        QApplication::sendEvent(&btn, &objHeld);
        EXPECT_EQ(objClicks.size(), 2) << "held down it presses once";
    }
}

TEST_F(FmMainKeysTest, AfterAKeyTheFocusIsWhereItWas) {
    m_objWindow.Choose("cmbInterface", Lan);
    m_objWindow.Field("SeFeedAdj").setFocus(Qt::TabFocusReason);
    ExpectSendError();
    Key(Qt::Key_F5);
    EXPECT_EQ(Focus(), &m_objWindow.Field("SeFeedAdj"));
    const CModalPerson objPerson([](QWidget& p_objDialog) { p_objDialog.close(); });
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(objPerson.Count(), 1);
    EXPECT_EQ(Focus(), &m_objWindow.Field("SeFeedAdj"));
}

TEST_F(FmMainKeysTest, AfterABoxOverAFlowTheFocusIsOnItsButton) {
    m_objWindow.Choose("cmbInterface", Lan);
    // A box takes the keyboard, and the window has it back, mostly before its buttons are enabled.
    m_objBoxes.WhileShown([this](const auto&) {
        QWidget objBox;
        objBox.show();
        objBox.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&objBox));
        objBox.close();
        m_objWindow.Form().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
    });
    for (const char* strName : {"btnRead", "btnGetStatus", "btnHeadCheck", "btnLanRead"}) {
        ExpectSendError();
        m_objWindow.Click(strName);
        EXPECT_EQ(Focus(), &m_objWindow.Button(strName)) << strName;
    }
}

TEST_F(FmMainKeysTest, AfterTheSetupOnTheLanTheFocusIsOnItsButton) {
    m_objWindow.Choose("cmbInterface", Lan);
    ASSERT_EQ(Focus(), &m_objWindow.List("cmbInterface"));
    // The window comes to the front again when the connection is being made already.
    m_objCalls.m_fnOnCall = [this] {
        if (m_objCalls.All().back().starts_with("LAN connect")) {
            m_objWindow.Form().activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
        }
    };
    EXPECT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    m_objCalls.m_fnOnCall = nullptr;
    EXPECT_EQ(Focus(), &m_objWindow.Button("btnSetup"));
}

TEST_F(FmMainKeysTest, AfterTheAboutBoxTheFocusIsWhereItWas) {
    m_objWindow.Field("SeFeedAdj").setFocus(Qt::TabFocusReason);
    const CModalPerson objPerson([](QWidget& p_objDialog) {
        QTest::keyClick(p_objDialog.windowHandle(), Qt::Key_2, Qt::AltModifier);
        QTest::keyClick(p_objDialog.windowHandle(), Qt::Key_F5);
        p_objDialog.close();
    });
    m_objWindow.Get<QAction>("smAbout").trigger();
    EXPECT_EQ(Tabs().currentIndex(), 0) << "the window's keys are not the dialog's";
    m_objWindow.Form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
    EXPECT_EQ(Focus(), &m_objWindow.Field("SeFeedAdj"));
}

}  // namespace
