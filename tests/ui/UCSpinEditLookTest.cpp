#include "tests/ui/CSpinEditFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QPalette>
#include <QTest>

namespace {

/// How a spin edit looks while something stands in it that it could not take.
class UCSpinEditLookTest : public CSpinEditFixture {
protected:
    void Begin(int p_iMax, int p_iMin, int p_iPlaces = 0, bool p_bHexa = false) {
        m_Se->InitializeSpinEdit(p_iMin, p_iMax, p_iMin, 1, 6, static_cast<std::int16_t>(p_iPlaces),
                                 p_bHexa);
        m_objUsual = Colour();
    }
    [[nodiscard]] QColor Colour() const { return m_objText->palette().color(QPalette::Base); }

    void ExpectWrong(const char* p_strText, const char* p_strWhy) {
        Type(p_strText);
        EXPECT_NE(Colour(), m_objUsual) << p_strText;
        EXPECT_TRUE(m_Se->accessibleDescription().startsWith(p_strWhy)) << p_strText;
        EXPECT_TRUE(m_Se->toolTip().contains(p_strWhy)) << p_strText;
    }
    void ExpectRight(const char* p_strText) {
        Type(p_strText);
        EXPECT_EQ(Colour(), m_objUsual) << p_strText;
        EXPECT_FALSE(m_Se->accessibleDescription().contains("not a number")) << p_strText;
        EXPECT_FALSE(m_Se->accessibleDescription().contains("out of range")) << p_strText;
    }

    QColor m_objUsual;
};

TEST_F(UCSpinEditLookTest, WhatIsNoNumberOrOutOfRangeShowsBeforeItIsLeft) {
    Begin(500, -500, 1);
    ExpectWrong("abc", "not a number");
    ExpectRight("1.5");
    ExpectWrong("-", "not a number");
    ExpectWrong("50.1", "out of range");
    ExpectRight("-50");
    ExpectWrong("", "not a number");
    EXPECT_TRUE(m_objBoxes.Shown().empty()) << "no box before it is left";
}

TEST_F(UCSpinEditLookTest, HexadecimalDigitsAreNumbersThere) {
    Begin(255, 32, 0, true);
    ExpectRight("b0");
    ExpectWrong("1f", "out of range");
    ExpectWrong("1g", "not a number");
    ExpectWrong("100", "out of range");
    ExpectRight("20");
}

TEST_F(UCSpinEditLookTest, TheLookGoesWithTheText) {
    Begin(10, 0);
    ExpectWrong("11", "out of range");
    m_objBoxes.Expect(UCSpinEdit::RangeMessage);
    Leave();
    EXPECT_EQ(Colour(), m_objUsual);
    m_Se->setFocus();
    ExpectWrong("12", "out of range");
    m_Se->SetValue(3);
    EXPECT_EQ(Colour(), m_objUsual);
}

TEST_F(UCSpinEditLookTest, TheTextStaysReadableInLightAndDark) {
    const QPalette objBefore = QApplication::palette();
    for (const QColor& objButton : {QColor(239, 239, 239), QColor(53, 53, 53)}) {
        QPalette objPalette(objButton);
        objPalette.setColor(QPalette::Base, objButton);
        QApplication::setPalette(objPalette);
        Begin(10, 0);
        ExpectWrong("11", "out of range");
        const int iText = qGray(m_objText->palette().color(QPalette::Text).rgb());
        EXPECT_GT(std::abs(iText - qGray(Colour().rgb())), 100);
        ExpectRight("10");
    }
    QApplication::setPalette(objBefore);
}

TEST_F(UCSpinEditLookTest, FollowsTheColoursAroundIt) {
    const QPalette objBefore = QApplication::palette();
    Begin(10, 0);
    ExpectWrong("11", "out of range");
    const QColor objLight = Colour();
    QPalette objDark(QColor(53, 53, 53));
    objDark.setColor(QPalette::Base, QColor(35, 35, 35));
    QApplication::setPalette(objDark);
    QApplication::processEvents();
    EXPECT_LT(qGray(Colour().rgb()), qGray(objLight.rgb()) / 2);
    EXPECT_NE(Colour(), QColor(35, 35, 35));
    QApplication::setPalette(objBefore);
    QApplication::processEvents();
    EXPECT_EQ(Colour(), objLight);
}

TEST_F(UCSpinEditLookTest, BehindTheRangeBoxWhatHasTheFocusIsSelected) {
    auto* const objNext = new UCSpinEdit(m_objBoxes, &m_objWindow);
    m_objWindow.layout()->addWidget(objNext);
    objNext->show();
    Begin(10, 0);
    Type("11");
    m_objBoxes.Expect(UCSpinEdit::RangeMessage);
    objNext->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(objNext->hasFocus());
    EXPECT_EQ(objNext->findChild<QLineEdit*>("CText")->selectedText(), "0");

    m_Se->setFocus(Qt::MouseFocusReason);
    Type("12");
    m_objBoxes.Expect(UCSpinEdit::RangeMessage);
    m_Se->CommitText();  // as a button has it done
    EXPECT_EQ(m_objText->selectedText(), "0");
}

}  // namespace
