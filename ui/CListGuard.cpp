#include "ui/CWheelGuard.h"

#include <QEvent>
#include <QWidget>

void CWheelGuard::Guard(QWidget& p_objWidget) {
    p_objWidget.setFocusPolicy(Qt::StrongFocus);
    p_objWidget.installEventFilter(this);
}

bool CWheelGuard::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    if (p_objEvent->type() == QEvent::Wheel) {
        const auto* objWidget = qobject_cast<const QWidget*>(p_objWatched);
        if (objWidget != nullptr && !objWidget->hasFocus()) {
            p_objEvent->ignore();  // so that the page takes it
            return true;
        }
    }
    return QObject::eventFilter(p_objWatched, p_objEvent);
}
