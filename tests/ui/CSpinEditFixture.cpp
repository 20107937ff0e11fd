#include "tests/ui/CSpinEditFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

CSpinEditFixture::CSpinEditFixture()
    : m_Se(new UCSpinEdit(m_objBoxes, &m_objWindow))
    , m_objText(m_Se->findChild<QLineEdit*>("CText"))
    , m_objOther(new QLineEdit(&m_objWindow)) {
    auto* objColumn = new QVBoxLayout(&m_objWindow);
    objColumn->addWidget(m_Se);
    objColumn->addWidget(m_objOther);
}

void CSpinEditFixture::SetUp() {
    ASSERT_NE(m_objText, nullptr);
    m_objWindow.resize(200, 100);
    m_objWindow.show();
    m_objWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow));
    m_Se->setFocus();
    ASSERT_TRUE(m_Se->hasFocus());
}

QString CSpinEditFixture::Shown() const {
    return m_objText->text();
}

void CSpinEditFixture::Type(const char* p_strText) {
    m_Se->selectAll();
    QTest::keyClick(m_Se, Qt::Key_Delete);
    QTest::keyClicks(m_Se, p_strText);
}

void CSpinEditFixture::Leave() {
    QTest::keyClick(m_Se, Qt::Key_Tab);
    ASSERT_TRUE(m_objOther->hasFocus());
}

QString CSpinEditFixture::Entered(const char* p_strText) {
    Type(p_strText);
    Leave();
    const QString strShown = Shown();
    m_Se->setFocus();
    return strShown;
}

bool CSpinEditFixture::Turn(int p_iDelta, Qt::KeyboardModifiers p_iModifiers) {
    const QPointF objPoint = m_Se->rect().center();
    QWheelEvent objEvent(objPoint, m_Se->mapToGlobal(objPoint), {}, {0, p_iDelta}, Qt::NoButton,
                         p_iModifiers, Qt::NoScrollPhase, false);
    objEvent.ignore();
    QApplication::sendEvent(m_Se, &objEvent);
    return objEvent.isAccepted();
}

QRect CSpinEditFixture::ButtonRect(bool p_bUp) const {
    QStyleOptionSpinBox objOption;
    objOption.initFrom(m_Se);
    objOption.frame = true;
    objOption.buttonSymbols = m_Se->buttonSymbols();
    return m_Se->style()->subControlRect(QStyle::CC_SpinBox, &objOption,
                                         p_bUp ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown,
                                         m_Se);
}
