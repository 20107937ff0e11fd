#include "ui/CPressGuard.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWidget>

#include <algorithm>

CPressGuard::CPressGuard() {
    qApp->installEventFilter(this);
}

void CPressGuard::Guard(const QWidget& p_objButton) {
    m_objGuarded.push_back(&p_objButton);
}

bool CPressGuard::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    if ((p_objEvent->type() != QEvent::MouseButtonPress &&
         p_objEvent->type() != QEvent::MouseButtonDblClick) ||
        !p_objWatched->isWidgetType()) {
        return false;
    }
    Note(*static_cast<const QMouseEvent*>(p_objEvent));
    return m_objLast.m_bSecond &&
           std::ranges::find(m_objGuarded, p_objWatched) != m_objGuarded.end();
}

void CPressGuard::Note(const QMouseEvent& p_objEvent) {
    const bool bDouble = p_objEvent.type() == QEvent::MouseButtonDblClick;
    const bool bSecond =
        bDouble ||
        (m_objLast.IsSame(p_objEvent) ? m_objLast.m_bSecond : m_objLast.IsFollowedBy(p_objEvent));
    m_objLast = {p_objEvent.timestamp(), p_objEvent.globalPosition().toPoint(), bSecond};
}

bool CPressGuard::Press::IsSame(const QMouseEvent& p_objEvent) const {
    return m_iTime == p_objEvent.timestamp() && m_objPlace == p_objEvent.globalPosition().toPoint();
}

bool CPressGuard::Press::IsFollowedBy(const QMouseEvent& p_objEvent) const {
    const QStyleHints& objHints = *QGuiApplication::styleHints();
    const QPoint objWay = p_objEvent.globalPosition().toPoint() - m_objPlace;
    const int iFarthest = objHints.mouseDoubleClickDistance();
    const auto iLongest = static_cast<quint64>(objHints.mouseDoubleClickInterval());
    return m_iTime != 0 && p_objEvent.timestamp() >= m_iTime &&
           p_objEvent.timestamp() - m_iTime < iLongest && std::abs(objWay.x()) <= iFarthest &&
           std::abs(objWay.y()) <= iFarthest;
}
