#include "model/CConversionError.h"
#include "tests/ui/CSpinEditFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>

#include <utility>
#include <vector>

namespace {

/// Values, and what is typed.
class UCSpinEditValueTest : public CSpinEditFixture {};

TEST_F(UCSpinEditValueTest, ANewFieldHoldsZero) {
    EXPECT_EQ(Shown(), "0");
    EXPECT_EQ(m_Se->GetValue(), CItemValue("0"));
    EXPECT_FALSE(m_Se->IsInitialized());
    EXPECT_TRUE(m_Se->Enable());
    EXPECT_TRUE(m_Se->SpinButton());
    m_Se->InitializeSpinEdit(5, 10, 0, 1);
    EXPECT_TRUE(m_Se->IsInitialized());
}

TEST_F(UCSpinEditValueTest, ShowsDecimalPlaces) {
    m_Se->InitializeSpinEdit(-500, 500, -500, 1, 5, 1);
    EXPECT_EQ(Shown(), "-50.0");
    m_Se->InitializeSpinEdit(0, 500, -500, 1, 5, 1);
    EXPECT_EQ(Shown(), "0.0");
    m_Se->InitializeSpinEdit(-5, 500, -500, 1, 5, 1);
    EXPECT_EQ(Shown(), "-0.5");
    m_Se->InitializeSpinEdit(1234, 9999, 0, 1, 6, 2);
    EXPECT_EQ(Shown(), "12.34");
    m_Se->InitializeSpinEdit(-7, 9999, -10, 1);
    EXPECT_EQ(Shown(), "-7");
}

TEST_F(UCSpinEditValueTest, AnUnusualCountOfPlacesKeepsTheFormat) {
    m_Se->InitializeSpinEdit(15, 100, 0, 1, 5, 1);
    m_Se->InitializeSpinEdit(2500, 9000, 0, 1, 5, 3);
    EXPECT_EQ(Shown(), "2.5");
}

TEST_F(UCSpinEditValueTest, ShowsHexadecimalBytesInTwoDigits) {
    m_Se->InitializeSpinEdit(10, 4096, 0, 1, 5, 0, true);
    EXPECT_EQ(Shown(), "0A");
    for (const auto& [iValue, strShown] : std::vector<std::pair<int, QString>>{{0, "00"},
                                                                               {15, "0F"},
                                                                               {16, "10"},
                                                                               {27, "1B"},
                                                                               {176, "B0"},
                                                                               {255, "FF"},
                                                                               {256, "100"}}) {
        EXPECT_TRUE(m_Se->SetValue(iValue));
        EXPECT_EQ(Shown(), strShown);
        EXPECT_EQ(m_Se->GetValue(), CItemValue(strShown.toStdString()));
    }
}

TEST_F(UCSpinEditValueTest, ArgumentsNotPassedMeanTheDefaults) {
    m_Se->InitializeSpinEdit(10, 255, 0, 1, 2, 0, true);
    m_Se->InitializeSpinEdit(10, 99999999, 0, 1);
    EXPECT_EQ(Shown(), "10");
    EXPECT_EQ(Entered("12345678"), "12345678");
}

TEST_F(UCSpinEditValueTest, TheInitialValueIsNotCheckedAndMayBeText) {
    m_Se->InitializeSpinEdit("300", "255", "0", "1");
    EXPECT_EQ(Shown(), "300");
    EXPECT_THROW(m_Se->InitializeSpinEdit(1, 2, 0, "one"), CConversionError);
    EXPECT_EQ(Shown(), "300");
}

TEST_F(UCSpinEditValueTest, HalfStepsUpToTheBoundAndRefusesWhatLiesBeyond) {
    m_Se->InitializeSpinEdit(0, 50, -50, 5, 5, 1);
    EXPECT_EQ(Shown(), "0.0");
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "0.5");
    EXPECT_EQ(m_Se->GetValue(), CItemValue(5));
    EXPECT_EQ(Entered("5.0"), "5.0");
    EXPECT_EQ(m_Se->GetValue(), CItemValue(50));
    ExpectRangeBox();
    EXPECT_EQ(Entered("5.5"), "5.0");
    ExpectRangeBox();
    EXPECT_EQ(Entered("-5.1"), "5.0");
    EXPECT_EQ(m_Se->GetValue(), CItemValue(50));
}

TEST_F(UCSpinEditValueTest, TheRangeIsCheckedBeforeRounding) {
    m_Se->InitializeSpinEdit(0, 50, 0, 1, 5, 1);
    ExpectRangeBox();
    EXPECT_EQ(Entered("5.01"), "0.0");
    ExpectRangeBox();
    EXPECT_EQ(Entered("-0.01"), "0.0");
    ExpectRangeBox();
    EXPECT_FALSE(m_Se->SetValue(50.25));
}

TEST_F(UCSpinEditValueTest, TiesGoToTheEvenNumber) {
    m_Se->InitializeSpinEdit(0, 500, -500, 1, 6, 1);
    EXPECT_EQ(Entered("0.25"), "0.2");
    EXPECT_EQ(Entered("0.35"), "0.4");
    EXPECT_EQ(Entered("-0.25"), "-0.2");
    EXPECT_TRUE(m_Se->SetValue(2.5));
    EXPECT_EQ(m_Se->GetValue(), CItemValue(2));
    EXPECT_TRUE(m_Se->SetValue(3.5));
    EXPECT_EQ(m_Se->GetValue(), CItemValue(4));
}

TEST_F(UCSpinEditValueTest, TypedDigitsAreTakenExactly) {
    m_Se->InitializeSpinEdit(0, 110, 0, 1, 6, 2);
    EXPECT_EQ(Entered("1.1"), "1.10");
    EXPECT_EQ(Entered("0.295"), "0.30");
    EXPECT_EQ(Entered("1e-1"), "0.10");
    EXPECT_EQ(Entered(" 0.5 "), "0.50");
}

TEST_F(UCSpinEditValueTest, ANumberOffTheIncrementIsAccepted) {
    m_Se->InitializeSpinEdit(0, 50, -50, 5, 5, 1);
    EXPECT_EQ(Entered("0.3"), "0.3");
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "0.8");
}

TEST_F(UCSpinEditValueTest, WhatIsNoNumberGivesWayWithoutAMessage) {
    m_Se->InitializeSpinEdit(15, 50, -50, 5, 5, 1);
    for (const char* strText : {"abc", "", "1,5", "0x1", "-", ".", "1.2.3"}) {
        EXPECT_EQ(Entered(strText), "1.5") << strText;
    }
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(UCSpinEditValueTest, HexadecimalTypingIsReadAsDigits) {
    m_Se->InitializeSpinEdit(5, 255, 0, 1, 5, 0, true);
    EXPECT_EQ(Entered("1b"), "1B");
    EXPECT_EQ(m_Se->GetValue(), CItemValue("1B"));
    EXPECT_EQ(Entered("B0"), "B0");
    EXPECT_EQ(Entered("1G"), "01");
    EXPECT_EQ(Entered("zz"), "00");
    EXPECT_TRUE(m_Se->SetValue(7));
    EXPECT_EQ(Entered(""), "00");
    ExpectRangeBox();
    EXPECT_EQ(Entered("100"), "00");
}

TEST_F(UCSpinEditValueTest, HexadecimalNonsenseIsRefusedBelowTheMinimum) {
    m_Se->InitializeSpinEdit(176, 255, 32, 1, 9, 0, true);
    ExpectRangeBox();
    EXPECT_EQ(Entered("zz"), "B0");
    ExpectRangeBox();
    EXPECT_EQ(Entered("1F"), "B0");
    ExpectRangeBox();
    EXPECT_EQ(Entered("FFFFFFFFF"), "B0");
    EXPECT_EQ(Entered("20"), "20");
}

TEST_F(UCSpinEditValueTest, SetValueTakesNumbersAndTexts) {
    m_Se->InitializeSpinEdit(0, 100, -100, 1);
    EXPECT_TRUE(m_Se->SetValue("-42"));
    EXPECT_EQ(Shown(), "-42");
    EXPECT_TRUE(m_Se->SetValue(100));
    ExpectRangeBox();
    EXPECT_FALSE(m_Se->SetValue(101));
    ExpectRangeBox();
    EXPECT_FALSE(m_Se->SetValue("1e300"));
    EXPECT_THROW(m_Se->SetValue("twelve"), CConversionError);
    EXPECT_EQ(Shown(), "100");
}

TEST_F(UCSpinEditValueTest, NewBoundsLeaveTheValueAlone) {
    m_Se->InitializeSpinEdit(50, 100, 0, 1);
    m_Se->SetMax(40);
    m_Se->SetMin("30");
    EXPECT_EQ(Shown(), "50");
    EXPECT_EQ(Entered("40"), "40");
    ExpectRangeBox();
    EXPECT_EQ(Entered("41"), "40");
    ExpectRangeBox();
    EXPECT_EQ(Entered("29"), "40");
    EXPECT_EQ(Entered("30"), "30");
    EXPECT_THROW(m_Se->SetMax("high"), CConversionError);
    EXPECT_THROW(m_Se->SetMin("low"), CConversionError);
}

TEST_F(UCSpinEditValueTest, WholeRangesOf32BitsWork) {
    m_Se->InitializeSpinEdit(2147483646, 2147483647, "-2147483648", 1);
    QTest::keyClick(m_Se, Qt::Key_Up);
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), "2147483647");
    EXPECT_EQ(Entered("-2147483648"), "-2147483648");
    QTest::keyClick(m_Se, Qt::Key_Down);
    EXPECT_EQ(Shown(), "-2147483648");
}

TEST_F(UCSpinEditValueTest, TypingEndsAtTheLength) {
    m_Se->InitializeSpinEdit(0, 255, 0, 1, 3);
    Type("12345");
    EXPECT_EQ(Shown(), "123");
    EXPECT_EQ(m_Se->GetValue(), CItemValue("123"));
}

TEST_F(UCSpinEditValueTest, AValueLongerThanTheLengthIsShownWhole) {
    m_Se->InitializeSpinEdit(-12345, 0, -99999, 1, 3);
    EXPECT_EQ(Shown(), "-12345");
    m_Se->SetValue(0);
    Type("12345");
    EXPECT_EQ(Shown(), "123");
}

TEST_F(UCSpinEditValueTest, WithPlacesTheHeldValueCountsNotTheText) {
    m_Se->InitializeSpinEdit(15, 50, 0, 1, 5, 1);
    Type("2.5");
    EXPECT_EQ(m_Se->GetValue(), CItemValue(15));
    EXPECT_TRUE(m_Se->CommitText());
    EXPECT_EQ(m_Se->GetValue(), CItemValue(25));
}

TEST_F(UCSpinEditValueTest, TheMachineryTellsTheTextToReaders) {
    m_Se->InitializeSpinEdit(15, 50, 0, 1, 5, 1);
    QAccessibleInterface* objReader = QAccessible::queryAccessibleInterface(m_Se);
    ASSERT_NE(objReader, nullptr);
    EXPECT_EQ(objReader->role(), QAccessible::SpinBox);
    EXPECT_EQ(objReader->text(QAccessible::Value), "1.5");
}

/// The moment at which what is typed counts.
class UCSpinEditLeavingTest : public CSpinEditFixture {
protected:
    void SetUp() override {
        CSpinEditFixture::SetUp();
        m_Se->InitializeSpinEdit(10, 50, 0, 1, 5);
    }
};

TEST_F(UCSpinEditLeavingTest, CommitTextIsTheSameCheckAtOnce) {
    Type("20");
    EXPECT_TRUE(m_Se->CommitText());
    EXPECT_EQ(Shown(), "20");
    Type("abc");
    EXPECT_TRUE(m_Se->CommitText());
    EXPECT_EQ(Shown(), "20");
    Type("51");
    ExpectRangeBox();
    EXPECT_FALSE(m_Se->CommitText());
    EXPECT_EQ(Shown(), "20");
    EXPECT_TRUE(m_Se->CommitText());
}

TEST_F(UCSpinEditLeavingTest, DisablingThrowsAwayWhatWasTyped) {
    Type("99");
    m_Se->SetEnable(false);
    EXPECT_EQ(Shown(), "10");
    EXPECT_FALSE(m_Se->hasFocus());
    EXPECT_TRUE(m_objBoxes.Shown().empty());
    m_Se->SetEnable(true);
    EXPECT_EQ(Shown(), "10");
}

TEST_F(UCSpinEditLeavingTest, DisablingThrowsAwayWhatWaitsBehindAMenuToo) {
    QMenu objMenu;
    objMenu.addAction("Copy");
    Type("99");
    objMenu.popup(m_objWindow.mapToGlobal(QPoint()));
    ASSERT_TRUE(objMenu.isVisible());
    m_Se->SetEnable(false);
    EXPECT_EQ(Shown(), "10");
    objMenu.close();
    EXPECT_EQ(Shown(), "10");
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(UCSpinEditLeavingTest, ANewValueTakesThePlaceOfWhatWasTyped) {
    Type("99");
    EXPECT_TRUE(m_Se->SetValue(20));
    EXPECT_EQ(Shown(), "20");
    Leave();
    EXPECT_EQ(Shown(), "20");
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(UCSpinEditLeavingTest, AllFieldsOfAWindowCanBeCommittedInTabOrder) {
    auto* const objSecond = new UCSpinEdit(m_objBoxes, &m_objWindow);
    auto* const objThird = new UCSpinEdit(m_objBoxes, &m_objWindow);
    QWidget::setTabOrder(objThird, objSecond);
    const auto Put = [](UCSpinEdit* p_objField, const char* p_strText) {
        p_objField->findChild<QLineEdit*>("CText")->setText(p_strText);
    };
    Put(objSecond, "101");
    Put(objThird, "102");
    Put(m_Se, "33");
    for (const auto& [strSecond, strThird] :
         std::vector<std::pair<QString, QString>>{{"101", "0"}, {"0", "0"}}) {
        ExpectRangeBox();
        EXPECT_FALSE(UCSpinEdit::CommitFields(*m_objOther)) << "any part stands for its window";
        EXPECT_EQ(objSecond->text(), strSecond);
        EXPECT_EQ(objThird->text(), strThird);
        EXPECT_EQ(m_Se->GetValue(), CItemValue("33"));
    }
    EXPECT_TRUE(UCSpinEdit::CommitFields(m_objWindow));
}

TEST_F(UCSpinEditLeavingTest, TheEditedFieldOfAWindowCanBeCommitted) {
    Type("51");
    ExpectRangeBox();
    EXPECT_FALSE(UCSpinEdit::CommitFields(m_objWindow));
    m_objOther->setFocus();
    EXPECT_TRUE(UCSpinEdit::CommitFields(m_objWindow));
}

TEST_F(UCSpinEditLeavingTest, EveryWayOutInsideTheWindowCounts) {
    Type("11");
    QTest::keyClick(m_Se, Qt::Key_Backtab);
    EXPECT_FALSE(m_Se->hasFocus());
    EXPECT_TRUE(m_Se->SetValue(10));
    for (const auto iReason : {Qt::TabFocusReason, Qt::MouseFocusReason, Qt::ShortcutFocusReason,
                               Qt::OtherFocusReason}) {
        m_Se->SetValue(10);
        m_Se->setFocus();
        Type("abc");
        m_objOther->setFocus(iReason);
        EXPECT_EQ(Shown(), "10") << iReason;
    }
}

TEST_F(UCSpinEditLeavingTest, AClickOnAnotherFieldCounts) {
    Type("0033");
    QTest::mouseClick(m_objOther, Qt::LeftButton);
    ASSERT_TRUE(m_objOther->hasFocus());
    EXPECT_EQ(Shown(), "33");
}

TEST_F(UCSpinEditLeavingTest, AMenuInFrontDoesNot) {
    QMenu objMenu;
    objMenu.addAction("Copy");
    Type("99");
    objMenu.popup(m_objWindow.mapToGlobal(QPoint()));
    ASSERT_TRUE(objMenu.isVisible());
    EXPECT_EQ(Shown(), "99");
    objMenu.close();
    EXPECT_EQ(Shown(), "99");
    EXPECT_TRUE(m_objBoxes.Shown().empty());
    ExpectRangeBox();
    Leave();
    EXPECT_EQ(Shown(), "10");
}

TEST_F(UCSpinEditLeavingTest, FocusThatWasLentAndGoesOnElsewhereCounts) {
    for (const auto iReason :
         {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
        m_Se->setFocus();
        Type("99");
        ExpectRangeBox();
        m_objOther->setFocus(iReason);
        EXPECT_EQ(Shown(), "10") << iReason;
    }
}

/// The same with a menu bar, which Alt gives the focus to.
class UCSpinEditMenuBarTest : public UCSpinEditLeavingTest {
protected:
    void SetUp() override {
        m_objBar.addMenu("File(&F)")->addAction("Exit(&E)");
        m_objWindow.layout()->setMenuBar(&m_objBar);
        UCSpinEditLeavingTest::SetUp();
        Type("99");
        QTest::keyClick(&m_objWindow, Qt::Key_Alt);
        ASSERT_TRUE(m_objBar.hasFocus());
        EXPECT_EQ(Shown(), "99");
        EXPECT_TRUE(m_objBoxes.Shown().empty());
    }
    void TearDown() override { m_objWindow.layout()->setMenuBar(nullptr); }

private:
    QMenuBar m_objBar;
};

TEST_F(UCSpinEditMenuBarTest, GoesOnBeingEditedWhenItHasTheFocusBack) {
    QTest::keyClick(&m_objWindow, Qt::Key_Alt);
    ASSERT_TRUE(m_Se->hasFocus());
    EXPECT_EQ(Shown(), "99");
    ExpectRangeBox();
    Leave();
    EXPECT_EQ(Shown(), "10");
}

TEST_F(UCSpinEditMenuBarTest, IsCheckedWhenTheFocusGoesElsewhere) {
    ExpectRangeBox();
    QTest::mouseClick(m_objOther, Qt::LeftButton);
    ASSERT_TRUE(m_objOther->hasFocus());
    EXPECT_EQ(Shown(), "10");
}

TEST_F(UCSpinEditMenuBarTest, IsCheckedByAHandlerMeanwhile) {
    ExpectRangeBox();
    EXPECT_FALSE(UCSpinEdit::CommitFields(m_objWindow));
    EXPECT_EQ(Shown(), "10");
    EXPECT_TRUE(UCSpinEdit::CommitFields(m_objWindow)) << "once is enough";
}

TEST_F(UCSpinEditLeavingTest, AWindowThatReallyComesInFrontDoesNot) {
    Type("99");
    QWidget objSecond;
    objSecond.show();
    objSecond.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&objSecond));
    ASSERT_FALSE(m_Se->hasFocus());
    EXPECT_EQ(Shown(), "99");
    objSecond.close();
    m_objWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow));
    EXPECT_EQ(Shown(), "99");
    ExpectRangeBox();
    Leave();
    EXPECT_EQ(Shown(), "10");
}

TEST_F(UCSpinEditLeavingTest, ClosingTheWindowDoesNot) {
    Type("99");
    m_objWindow.close();
    EXPECT_EQ(Shown(), "99");
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(UCSpinEditLeavingTest, TheRangeBoxDoesNotBringItselfUpAgain) {
    m_objBoxes.WhileShown([](const auto&) {
        QWidget objBox;
        objBox.show();
        objBox.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&objBox));
    });
    Type("99");
    ExpectRangeBox();
    EXPECT_FALSE(m_Se->CommitText());
    m_objWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow));
    Type("98");
    ExpectRangeBox();
    QTest::keyClick(m_Se, Qt::Key_Tab);
    EXPECT_EQ(m_objBoxes.Shown().size(), 2U);
    EXPECT_EQ(Shown(), "10");
}

TEST_F(UCSpinEditLeavingTest, ReturnChangesNothingAndGoesOnToTheWindow) {
    Type("99");
    const QSignalSpy objFinished(m_Se, &QAbstractSpinBox::editingFinished);
    for (const auto iKey : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent objEvent(QEvent::KeyPress, iKey, Qt::NoModifier);
        QApplication::sendEvent(m_Se, &objEvent);
        EXPECT_FALSE(objEvent.isAccepted());
    }
    EXPECT_EQ(Shown(), "99");
    EXPECT_EQ(objFinished.count(), 0);
}

}  // namespace
