#include "ui/CInterfaceHold.h"

#include "ui/CFieldTexts.h"
#include "ui/CHoldableList.h"

#include <QKeyEvent>
#include <QPalette>

namespace {

constexpr const char* Why =
    "Can be changed when what runs is over: what is left of it would go to the other printer";

/// The colours of p_objPalette as they are where something is disabled.
QPalette Greyed(QPalette p_objPalette) {
    for (const QPalette::ColorRole iRole : {QPalette::ButtonText, QPalette::Text}) {
        const QBrush objBrush = p_objPalette.brush(QPalette::Disabled, iRole);
        p_objPalette.setBrush(QPalette::Active, iRole, objBrush);
        p_objPalette.setBrush(QPalette::Inactive, iRole, objBrush);
    }
    return p_objPalette;
}

}  // namespace

void CInterfaceHold::Watch(CHoldableList& p_cmb) {
    m_cmb = &p_cmb;
    p_cmb.installEventFilter(this);
}

void CInterfaceHold::SetHeld(bool p_bHeld) {
    if (m_bHeld == p_bHeld || m_cmb == nullptr) {
        return;
    }
    m_bHeld = p_bHeld;
    m_cmb->SetHeld(p_bHeld);
    m_cmb->setPalette(p_bHeld ? Greyed(m_cmb->palette()) : QPalette());
    CFieldTexts::Of(*m_cmb).Set(CFieldTexts::Part::Note, p_bHeld ? Why : "");
}

bool CInterfaceHold::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    if (!m_bHeld || p_objWatched != m_cmb || !Takes(*p_objEvent)) {
        return QObject::eventFilter(p_objWatched, p_objEvent);
    }
    p_objEvent->ignore();  // so that whoever stands around it may take it
    return true;
}

bool CInterfaceHold::Takes(const QEvent& p_objEvent) const {
    switch (p_objEvent.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        return true;
    case QEvent::KeyPress: {
        const int iKey = static_cast<const QKeyEvent&>(p_objEvent).key();
        return m_cmb->hasFocus() && iKey != Qt::Key_Tab && iKey != Qt::Key_Backtab;
    }
    default:
        return false;
    }
}
