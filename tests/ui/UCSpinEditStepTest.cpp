#include "tests/ui/CSpinEditFixture.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QProxyStyle>
#include <QStyle>
#include <QTest>

namespace {

/// Keys, wheel and buttons.
class UCSpinEditStepTest : public CSpinEditFixture {
protected:
    void SetUp() override {
        CSpinEditFixture::SetUp();
        m_Se->InitializeSpinEdit(10, 50, 0, 4);
    }

    void Click(bool p_bUp, Qt::KeyboardModifiers p_iModifiers = Qt::NoModifier) {
        QTest::mouseClick(m_Se, Qt::LeftButton, p_iModifiers, ButtonRect(p_bUp).center());
    }
};

TEST_F(UCSpinEditStepTest, ArrowKeysStepByTheIncrement) {
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "14");
    QTest::keyClick(m_Se, Qt::Key_Down);
    QTest::keyClick(m_Se, Qt::Key_Down);
    EXPECT_EQ(Shown(), "6");
}

TEST_F(UCSpinEditStepTest, ModifiersMakeNoBiggerStep) {
    for (const auto iModifier : {Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier}) {
        m_Se->SetValue(10);
        QTest::keyClick(m_Se, Qt::Key_Up, iModifier);
        EXPECT_EQ(Shown(), "14") << iModifier;
        QTest::keyClick(m_Se, Qt::Key_Down, iModifier);
        EXPECT_EQ(Shown(), "10") << iModifier;
    }
}

TEST_F(UCSpinEditStepTest, AStepBeyondTheRangeIsIgnored) {
    m_Se->SetValue(47);
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "47");
    m_Se->SetValue(46);
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "50");
    m_Se->SetValue(3);
    QTest::keyClick(m_Se, Qt::Key_Down);
    EXPECT_EQ(Shown(), "3");
    m_Se->InitializeSpinEdit(0, 0, -15, 1, 3);
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "0");
    QTest::keyClick(m_Se, Qt::Key_Down);
    EXPECT_EQ(Shown(), "-1");
}

TEST_F(UCSpinEditStepTest, StepsGoOnFromTheHeldValue) {
    Type("33");
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "14");
}

TEST_F(UCSpinEditStepTest, PageKeysAreLeftToTheWindow) {
    for (const auto iKey : {Qt::Key_PageUp, Qt::Key_PageDown}) {
        QKeyEvent objEvent(QEvent::KeyPress, iKey, Qt::NoModifier);
        QApplication::sendEvent(m_Se, &objEvent);
        EXPECT_FALSE(objEvent.isAccepted());
        EXPECT_EQ(Shown(), "10");
    }
}

TEST_F(UCSpinEditStepTest, AHexadecimalFieldStepsInHexadecimal) {
    m_Se->InitializeSpinEdit(15, 255, 0, 1, 5, 0, true);
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "10");
    QTest::keyClick(m_Se, Qt::Key_Down);
    EXPECT_EQ(Shown(), "0F");
}

TEST_F(UCSpinEditStepTest, TheWheelStepsOnceANotch) {
    EXPECT_TRUE(Turn(120));
    EXPECT_EQ(Shown(), "14");
    EXPECT_TRUE(Turn(120, Qt::ControlModifier));
    EXPECT_EQ(Shown(), "18");
    EXPECT_TRUE(Turn(-240));
    EXPECT_EQ(Shown(), "10");
    EXPECT_TRUE(Turn(-1200));
    EXPECT_EQ(Shown(), "2");
}

TEST_F(UCSpinEditStepTest, ASmoothWheelAddsUpToANotch) {
    EXPECT_TRUE(Turn(60));
    EXPECT_EQ(Shown(), "10");
    EXPECT_TRUE(Turn(60));
    EXPECT_EQ(Shown(), "14");
    EXPECT_TRUE(Turn(-60));
    EXPECT_EQ(Shown(), "14");
}

TEST_F(UCSpinEditStepTest, WithoutTheFocusTheWheelBelongsToThePage) {
    Leave();
    EXPECT_FALSE(Turn(120));
    EXPECT_FALSE(Turn(-120, Qt::ControlModifier));
    EXPECT_EQ(Shown(), "10");
    EXPECT_FALSE(m_Se->hasFocus());
    EXPECT_EQ(m_Se->focusPolicy(), Qt::StrongFocus);
}

TEST_F(UCSpinEditStepTest, ButtonsStepWithinTheRange) {
    Click(true);
    EXPECT_EQ(Shown(), "14");
    Click(true, Qt::ControlModifier);
    EXPECT_EQ(Shown(), "18");
    Click(false);
    EXPECT_EQ(Shown(), "14");
    m_Se->SetValue(48);
    Click(true);
    EXPECT_EQ(Shown(), "48");
    m_Se->SetValue(3);
    Click(false);
    EXPECT_EQ(Shown(), "3");
}

TEST_F(UCSpinEditStepTest, AHeldButtonRepeatsUpToTheRange) {
    m_Se->InitializeSpinEdit(47, 50, 0, 1);
    QTest::mousePress(m_Se, Qt::LeftButton, {}, ButtonRect(true).center());
    EXPECT_EQ(Shown(), "48");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shown() == "50"; }));
    QTest::qWait(200);
    QTest::mouseRelease(m_Se, Qt::LeftButton, {}, ButtonRect(true).center());
    EXPECT_EQ(Shown(), "50");
}

TEST_F(UCSpinEditStepTest, APressThatWaitedBehindTheRangeBoxDoesNotRun) {
    auto* objSecond = new UCSpinEdit(m_objBoxes, &m_objWindow);
    objSecond->setGeometry(m_Se->geometry().translated(0, m_Se->height()));
    objSecond->show();
    m_objBoxes.WhileShown([this](const auto&) {
        QTest::mouseRelease(&m_objWindow, Qt::LeftButton);  // the person answers the box
    });
    Type("99");
    ExpectRangeBox();
    const QPoint objUp = ButtonRect(true).center();
    QTest::mousePress(objSecond, Qt::LeftButton, {}, objUp);
    EXPECT_TRUE(objSecond->hasFocus());
    QTest::qWait(700);  // longer than the pause before the auto-repeat
    EXPECT_EQ(objSecond->GetValue(), CItemValue("0"));
    QTest::mouseClick(objSecond, Qt::LeftButton, {}, objUp);
    EXPECT_EQ(objSecond->GetValue(), CItemValue("1"));
}

TEST_F(UCSpinEditStepTest, ADisabledFieldShowsItsValueAndTakesNothing) {
    m_Se->SetEnable(false);
    EXPECT_FALSE(m_Se->Enable());
    EXPECT_FALSE(m_objText->isEnabled());
    EXPECT_FALSE(m_Se->hasFocus());
    QTest::keyClicks(m_Se, "7");
    QTest::keyClick(m_Se, Qt::Key_Up);
    QTest::keyClicks(m_objText, "7");
    Click(true);
    Turn(120);
    EXPECT_EQ(Shown(), "10");
    m_Se->SetValue(20);
    EXPECT_EQ(Shown(), "20");
    m_Se->SetEnable(true);
    EXPECT_TRUE(m_Se->Enable());
    m_Se->setFocus();
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "24");
}

/// The layout of text box and buttons.
class UCSpinEditLayoutTest : public CSpinEditFixture {
protected:
    void SetUp() override {
        CSpinEditFixture::SetUp();
        m_Se->InitializeSpinEdit(10, 50, 0, 1);
    }

    [[nodiscard]] QImage Picture() const { return m_Se->grab().toImage(); }
};

TEST_F(UCSpinEditLayoutTest, AnEditAsWideAsTheControlCoversItForGood) {
    const int iNative = m_objText->width();
    m_Se->SetEditWidth(m_Se->width());
    EXPECT_EQ(m_Se->EditWidth(), m_Se->width());
    EXPECT_GT(m_objText->width(), iNative);
    EXPECT_EQ(m_Se->buttonSymbols(), QAbstractSpinBox::NoButtons);
    m_objWindow.resize(400, 100);
    QTest::qWait(0);
    EXPECT_GT(m_objText->width(), m_Se->width() - 10);
    QTest::mouseClick(m_Se, Qt::LeftButton, {}, {m_Se->width() - 1, 2});
    EXPECT_EQ(Shown(), "10");
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "11");
}

TEST_F(UCSpinEditLayoutTest, ANarrowerEditHasItsWidth) {
    m_Se->SetEditWidth(80);
    EXPECT_EQ(m_Se->EditWidth(), 80);
    EXPECT_EQ(m_objText->geometry().right(), 79);
    EXPECT_GE(ButtonRect(true).left(), 80);
    EXPECT_EQ(m_Se->buttonSymbols(), QAbstractSpinBox::UpDownArrows);
    m_objWindow.resize(400, 100);
    QTest::qWait(0);
    EXPECT_EQ(m_objText->geometry().right(), 79);
}

TEST_F(UCSpinEditLayoutTest, ButtonsCanBeHidden) {
    const int iNative = m_objText->width();
    m_Se->SetSpinButton(false);
    EXPECT_FALSE(m_Se->SpinButton());
    EXPECT_EQ(m_Se->buttonSymbols(), QAbstractSpinBox::NoButtons);
    m_Se->SetSpinButton(true);
    EXPECT_EQ(m_Se->buttonSymbols(), QAbstractSpinBox::UpDownArrows);
    EXPECT_EQ(m_objText->width(), iNative);
    m_Se->SetEditWidth(m_Se->width());
    m_Se->SetSpinButton(true);
    EXPECT_EQ(m_Se->buttonSymbols(), QAbstractSpinBox::NoButtons);
}

TEST_F(UCSpinEditLayoutTest, TheButtonWidthLaysOutTheParts) {
    EXPECT_EQ(m_Se->SpinButtonWidth(), ButtonRect(true).width());
    m_Se->SetEditWidth(m_Se->width());
    m_Se->SetSpinButtonWidth(40);
    EXPECT_EQ(m_Se->SpinButtonWidth(), 40);
    EXPECT_EQ(m_objText->geometry().right() + 1, m_Se->width() - 40);
    EXPECT_EQ(m_Se->EditWidth(), m_objText->width());
    for (const bool bUp : {true, false}) {
        EXPECT_EQ(ButtonRect(bUp).left(), m_Se->width() - 40);
        EXPECT_EQ(ButtonRect(bUp).width(), 40);
    }
    const QPoint objUp{m_Se->width() - 38, ButtonRect(true).center().y()};
    QTest::mouseClick(m_Se, Qt::LeftButton, {}, objUp);
    EXPECT_EQ(Shown(), "11");
    m_Se->SetEditWidth(m_Se->width());
    EXPECT_EQ(m_Se->buttonSymbols(), QAbstractSpinBox::NoButtons);
}

TEST_F(UCSpinEditLayoutTest, ButtonsStandAtTheOtherEdgeFromRightToLeft) {
    m_Se->setLayoutDirection(Qt::RightToLeft);
    m_Se->SetSpinButtonWidth(40);
    EXPECT_EQ(ButtonRect(true).left(), 0);
    EXPECT_EQ(ButtonRect(true).right(), 39);
    EXPECT_EQ(m_objText->geometry().left(), 40);
}

TEST_F(UCSpinEditLayoutTest, EveryWidthIsDrawnAsItIs) {
    m_Se->clearFocus();
    m_Se->SetSpinButtonWidth(20);
    const QImage objNarrow = Picture();
    m_Se->SetSpinButtonWidth(60);
    EXPECT_NE(Picture(), objNarrow);
    m_Se->SetSpinButtonWidth(20);
    EXPECT_EQ(Picture(), objNarrow);
}

TEST_F(UCSpinEditLayoutTest, OwnWidthsFollowAChangeOfStyle) {
    m_Se->SetSpinButtonWidth(40);
    const QString strFormer = QApplication::style()->name();
    ASSERT_NE(strFormer, "windows");
    QApplication::setStyle("windows");
    auto* objProxy = qobject_cast<QProxyStyle*>(m_Se->style());
    EXPECT_TRUE(objProxy != nullptr && objProxy->baseStyle()->name() == "windows");
    EXPECT_EQ(ButtonRect(true).width(), 40);
    QApplication::setStyle(strFormer);
    EXPECT_EQ(ButtonRect(true).width(), 40);
}

TEST_F(UCSpinEditLayoutTest, TheHintHasRoomForTheWidestValue) {
    const int iNarrow = m_Se->sizeHint().width();
    m_Se->InitializeSpinEdit(0, 5, -500000, 1);
    EXPECT_GT(m_Se->sizeHint().width(), iNarrow);
    m_Se->resize(m_Se->minimumSizeHint());
    EXPECT_GT(m_objText->width(), m_Se->fontMetrics().horizontalAdvance("-500000"));
}

}  // namespace
