#include "ui/CFootedArea.h"

#include <QApplication>
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>

#include <algorithm>

CPageFoot::CPageFoot(QWidget* p_objPage)
    : QWidget(p_objPage)
    , m_objPlace(new QWidget(p_objPage)) {}

bool CPageFoot::event(QEvent* p_objEvent) {
    if (p_objEvent->type() == QEvent::LayoutRequest || p_objEvent->type() == QEvent::Polish) {
        m_objPlace->setFixedHeight(sizeHint().height());
        m_objPlace->setMinimumWidth(sizeHint().width());
    }
    return QWidget::event(p_objEvent);
}

void CPageFoot::paintEvent(QPaintEvent* p_objEvent) {
    QPainter(this).fillRect(p_objEvent->rect(), palette().window());  // what is behind it is hidden
}

CFootedArea::CFootedArea(QWidget* p_objPage, CPageFoot* p_objFoot, QWidget* p_objParent)
    : QScrollArea(p_objParent)
    , m_objFoot(p_objFoot) {
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);  // Tab goes from field to field
    setWidget(p_objPage);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* /*p_objFormer*/, QWidget* p_objNow) {
                // What is clicked was seen, and must not move away under the mouse.
                if (p_objNow != nullptr && widget()->isAncestorOf(p_objNow) &&
                    QGuiApplication::mouseButtons() == Qt::NoButton) {
                    Show(*p_objNow);
                }
            });
    if (m_objFoot != nullptr) {
        m_objFoot->Place()->installEventFilter(this);
        connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &CFootedArea::PlaceFoot);
        connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &CFootedArea::PlaceFoot);
    }
}

CFootedArea::~CFootedArea() {
    disconnect(qApp, nullptr, this, nullptr);  // the page is gone before the focus is
}

bool CFootedArea::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    const bool bHandled = QScrollArea::eventFilter(p_objWatched, p_objEvent);
    // The viewport's and the page's are watched by the toolkit anyway.
    if (p_objEvent->type() == QEvent::Resize || p_objEvent->type() == QEvent::Move) {
        PlaceFoot();
    }
    return bHandled;
}

void CFootedArea::PlaceFoot() {
    if (m_objFoot == nullptr) {
        return;
    }
    const QRect objSeen(-widget()->pos(), viewport()->size());
    const QRect objPlace = m_objFoot->Place()->geometry();
    const int iLowest = objSeen.top() + objSeen.height() - objPlace.height();
    m_objFoot->setGeometry(objSeen.left(), std::min(objPlace.top(), iLowest), objSeen.width(),
                           objPlace.height());
    m_objFoot->raise();
}

void CFootedArea::resizeEvent(QResizeEvent* p_objEvent) {
    QScrollArea::resizeEvent(p_objEvent);
    PlaceFoot();
}

void CFootedArea::Show(QWidget& p_objFocus) {
    ensureWidgetVisible(&p_objFocus);
    if (m_objFoot == nullptr || m_objFoot->isAncestorOf(&p_objFocus)) {
        return;
    }
    const int iBottom = p_objFocus.mapTo(widget(), p_objFocus.rect().bottomLeft()).y();
    const int iHidden = iBottom + 1 - m_objFoot->y();
    if (iHidden > 0) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() + iHidden);
    }
}
