#include "ui/CSpinEditLook.h"

#include "ui/CFieldTexts.h"
#include "ui/UCSpinEdit.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>

namespace {

/// p_objBase with so much red in it that it shows, and so little that the text stays readable on
/// it: dark colours stay dark, light ones light.
QColor Reddened(const QColor& p_objBase) {
    constexpr double dShare = 0.3;
    const QColor objRed(255, 0, 0);
    const auto Mixed = [](int p_iFrom, int p_iTo) {
        return static_cast<int>(p_iFrom + (p_iTo - p_iFrom) * dShare);
    };
    return {Mixed(p_objBase.red(), objRed.red()), Mixed(p_objBase.green(), objRed.green()),
            Mixed(p_objBase.blue(), objRed.blue())};
}

QString FaultText(CSpinForm::Fault p_iFault) {
    switch (p_iFault) {
    case CSpinForm::Fault::NoNumber:
        return "not a number";
    case CSpinForm::Fault::OutOfRange:
        return "out of range";
    case CSpinForm::Fault::None:
        break;
    }
    return {};
}

}  // namespace

CSpinEditLook::CSpinEditLook(UCSpinEdit& p_Se)
    : QObject(&p_Se)
    , m_Se(p_Se) {
    m_Se.installEventFilter(this);
}

void CSpinEditLook::Update(const CSpinForm& p_objForm, const QString& p_strText) {
    const CSpinForm::Fault iFault = p_objForm.FaultOf(p_strText);
    CFieldTexts& objTexts = CFieldTexts::Of(m_Se);
    objTexts.Set(CFieldTexts::Part::Range, p_objForm.RangeText());
    objTexts.Set(CFieldTexts::Part::Wrong, FaultText(iFault));
    const bool bWrong = iFault != CSpinForm::Fault::None;
    if (bWrong != m_bWrong) {
        m_bWrong = bWrong;
        Paint();
    }
}

bool CSpinEditLook::eventFilter(QObject* /*p_objWatched*/, QEvent* p_objEvent) {
    if (p_objEvent->type() == QEvent::PaletteChange && m_bWrong && !m_bPainting) {
        Paint();
    }
    return false;
}

void CSpinEditLook::Paint() {
    m_bPainting = true;
    QPalette objOwn;
    m_Se.setPalette(objOwn);  // what it would have without
    if (m_bWrong) {
        objOwn.setColor(QPalette::Base, Reddened(m_Se.palette().color(QPalette::Base)));
        m_Se.setPalette(objOwn);
    }
    m_bPainting = false;
}
