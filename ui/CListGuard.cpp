#include "ui/CListGuard.h"

#include "ui/MPress.h"

#include <QComboBox>
#include <QMouseEvent>

void CListGuard::Guard(QComboBox& p_cmb) {
    p_cmb.setFocusPolicy(Qt::StrongFocus);
    p_cmb.installEventFilter(this);
}

bool CListGuard::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    switch (p_objEvent->type()) {
    case QEvent::Wheel:
        return PassWheelOn(*p_objWatched, *p_objEvent);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // Opened while the window is not yet in front again, its entries would leave the toolkit
        // in the belief that the window never came back: no field would be checked when left.
        return MPress::HasWaited(*static_cast<const QMouseEvent*>(p_objEvent));
    default:
        return QObject::eventFilter(p_objWatched, p_objEvent);
    }
}

bool CListGuard::PassWheelOn(const QObject& p_objWatched, QEvent& p_objEvent) {
    const auto* const objWidget = qobject_cast<const QWidget*>(&p_objWatched);
    if (objWidget == nullptr || objWidget->hasFocus()) {
        return false;
    }
    p_objEvent.ignore();  // so that the page takes it
    return true;
}
