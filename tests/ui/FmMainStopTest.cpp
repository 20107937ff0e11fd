#include "tests/ui/CLineFixture.h"

#include <QAccessible>
#include <QWheelEvent>

// Ending the attempt to connect, and the interface list while something runs.

namespace {

using Connect = CFakeTcpClient::ConnectResult;

/// The LAN is chosen and its printer takes no connection.
class FmMainStopTest : public CLineFixture {
protected:
    void SetUp() override {
        CLineFixture::SetUp();
        Choose(Lan);
        m_objSocket.m_iConnectResult = Connect::Never;
    }

    /// Has p_fnStop act a second after the attempt has begun, and expects it to be over at once.
    void ExpectStoppedBy(const std::function<void()>& p_fnStop) {
        std::int64_t iStopped = 0;
        After(1000, [&] {
            EXPECT_EQ(Doing(), "connecting");
            EXPECT_EQ(Link(), "LAN connecting to 192.168.10.20:8000 \u2026");
            EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
            TakeKeyboard();
            iStopped = m_objClock.Elapsed();
            p_fnStop();
        });
        SetUpLink();
        ASSERT_GT(iStopped, 0);
        EXPECT_LE(m_objClock.Elapsed() - iStopped, 2 * CFakeEventLoop::StepMilliseconds);
        ExpectStopped();
    }

    void ExpectStopped() {
        EXPECT_EQ(Link(), "LAN not connected");
        EXPECT_EQ(Doing(), "");
        EXPECT_EQ(Stop(), nullptr);
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
        EXPECT_FALSE(m_objSocket.IsConnected());
        EXPECT_TRUE(m_objBoxes.Shown().empty());
    }

    void PressEscape() { QTest::keyClick(&m_objWindow.Form(), Qt::Key_Escape); }
};

TEST_F(FmMainStopTest, TheButtonEndsTheAttemptAtOnce) {
    ExpectStoppedBy([this] {
        ASSERT_NE(Stop(), nullptr);
        EXPECT_TRUE(Stop()->isVisible());
        EXPECT_EQ(Stop()->text(), "Stop");
        EXPECT_FALSE(Stop()->accessibleDescription().isEmpty());
        QTest::mouseClick(Stop(), Qt::LeftButton);
    });
}

TEST_F(FmMainStopTest, EscapeEndsTheAttemptAtOnce) {
    ExpectStoppedBy([this] { PressEscape(); });
}

TEST_F(FmMainStopTest, TheButtonIsReachedByTabAndPressedByKey) {
    ExpectStoppedBy([this] {
        constexpr int iMost = 200;
        QWidget* objFocus = &m_objWindow.List("cmbInterface");
        objFocus->setFocus();
        for (int i = 0; i < iMost && !Stop()->hasFocus(); ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        ASSERT_TRUE(Stop()->hasFocus());
        QTest::keyClick(Stop(), Qt::Key_Space);
    });
    // No field has the focus now in which a key would change something.
    EXPECT_TRUE(m_objWindow.Form().focusWidget() == nullptr ||
                m_objWindow.Form().focusWidget() == &m_objWindow.Button("btnSetup"));
}

TEST_F(FmMainStopTest, WhatComesLateConnectsNothing) {
    ExpectStoppedBy([this] {
        PressEscape();
        EXPECT_GE(m_objSocket.m_iCloses, 1);
    });
    m_objEventLoop.Idle(100);
    ExpectStopped();
}

TEST_F(FmMainStopTest, TheNextAttemptKnowsNothingOfIt) {
    ExpectStoppedBy([this] { PressEscape(); });
    m_objSocket.m_iConnectResult = Connect::Connects;
    SetUpLink();
    EXPECT_EQ(Link(), "LAN connected to 192.168.10.20:8000");
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(m_objSocket.m_strSent, std::vector<std::string>{"{WS|}"});
}

TEST_F(FmMainStopTest, EscapeDoesNothingOtherwise) {
    m_objSocket.m_iConnectResult = Connect::Connects;
    SetUpLink();
    PressEscape();
    EXPECT_EQ(Link(), "LAN connected to 192.168.10.20:8000");
    After(1200, [&] { PressEscape(); });
    m_objWindow.Click("btnRead");
    EXPECT_EQ(m_objSocket.m_strSent.size(), 3U);
    EXPECT_EQ(Link(), "LAN connected to 192.168.10.20:8000");
}

TEST_F(FmMainStopTest, ThereIsNoButtonForOtherThings) {
    m_objSocket.m_iConnectResult = Connect::Connects;
    SetUpLink();
    EXPECT_EQ(Stop(), nullptr);
    After(1200, [&] { EXPECT_EQ(Stop(), nullptr); });
    m_objWindow.Click("btnRead");
    Choose(Com);
    SetUpLink();
    EXPECT_EQ(Stop(), nullptr);
}

// The interface list.

class FmMainInterfaceHoldTest : public CLineFixture {
protected:
    QComboBox& Interfaces() { return m_objWindow.List("cmbInterface"); }

    /// All that a person can do to a list.
    void Meddle() {
        const QPointF objPoint = Interfaces().rect().center();
        for (const Qt::Key iKey : {Qt::Key_Up, Qt::Key_Home, Qt::Key_C, Qt::Key_Space}) {
            QTest::keyClick(&Interfaces(), iKey);
        }
        QTest::keyClick(&Interfaces(), Qt::Key_Down, Qt::AltModifier);
        QTest::mouseClick(&Interfaces(), Qt::LeftButton);
        // An assistive program presses no key.
        QAccessible::queryAccessibleInterface(&Interfaces())
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::showMenuAction());
        QWheelEvent objWheel(objPoint, Interfaces().mapToGlobal(objPoint), {}, {0, 120},
                             Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Interfaces(), &objWheel);
    }

    void ExpectHeld() {
        TakeKeyboard();
        Interfaces().setFocus();
        Meddle();
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_EQ(Shown("cmbInterface"), "LAN");
        EXPECT_EQ(m_objWindow.Form().Interface().GetActiveInterface(), Lan);
        EXPECT_TRUE(Interfaces().toolTip().contains("when what runs is over"));
        EXPECT_TRUE(Interfaces().accessibleDescription().contains("when what runs is over"));
        EXPECT_TRUE(Interfaces().accessibleDescription().contains("Interface"));
        EXPECT_EQ(Interfaces().palette().color(QPalette::Active, QPalette::ButtonText),
                  Interfaces().palette().color(QPalette::Disabled, QPalette::ButtonText));
        EXPECT_TRUE(Interfaces().hasFocus());
    }

    void ExpectFree() {
        EXPECT_EQ(Interfaces().toolTip(), "");
        EXPECT_EQ(Interfaces().accessibleDescription(), "Interface");
        EXPECT_EQ(Interfaces().palette().color(QPalette::Active, QPalette::ButtonText),
                  m_objWindow.Form().palette().color(QPalette::Active, QPalette::ButtonText));
        m_objWindow.Choose("cmbInterface", Com);
        EXPECT_EQ(Shown("cmbInterface"), "COM");
        m_objWindow.Choose("cmbInterface", Lan);
        EXPECT_EQ(Shown("cmbInterface"), "LAN");
    }

    QString Shown(const QString& p_strName) { return m_objWindow.Shown(p_strName); }
};

TEST_F(FmMainInterfaceHoldTest, TakesNoHandWhileAFlowHoldsTheButtons) {
    Use(Lan);
    for (const char* const strButton : {"btnRead", "btnSet", "btnHeadCheck", "btnPaperEnd"}) {
        SCOPED_TRACE(strButton);
        m_objWindow.BringToFront(strButton);
        m_objPrinter.m_iDelay = 300;
        int iMeddled = 0;
        After(100, [&] {
            ++iMeddled;
            ExpectHeld();
        });
        m_objWindow.Click(strButton);
        EXPECT_EQ(iMeddled, 1);
        EXPECT_TRUE(Interfaces().hasFocus()) << "where it was put meanwhile";
        ExpectFree();
    }
}

TEST_F(FmMainInterfaceHoldTest, TakesNoHandWhileAConnectionIsMade) {
    Choose(Lan);
    m_objSocket.m_iConnectResult = Connect::Never;
    After(500, [&] {
        ExpectHeld();
        m_objSocket.ConnectNow();
    });
    SetUpLink();
    ExpectFree();
}

TEST_F(FmMainInterfaceHoldTest, TabPassesThroughIt) {
    Use(Lan);
    After(100, [&] {
        Interfaces().setFocus();
        QTest::keyClick(&Interfaces(), Qt::Key_Tab);
        EXPECT_FALSE(Interfaces().hasFocus());
    });
    m_objWindow.Click("btnRead");
}

TEST_F(FmMainInterfaceHoldTest, LanSetLeavesItAsItIs) {
    Use(Lan);
    m_objPrinter.m_iDelay = 300;
    After(100, [&] { ExpectFree(); });
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(m_objSocket.m_strSent.size(), 5U);
}

}  // namespace
