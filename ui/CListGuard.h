#pragma once

#include <QObject>

class QWidget;

/// Keeps the mouse wheel from changing a field that the pointer merely passes while a page
/// scrolls: a guarded widget hears the wheel only while it has the focus.
class CWheelGuard : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Guards p_objWidget from now on, for as long as both live, and keeps the wheel from giving
    /// it the focus. What it does not hear goes on to its parent.
    void Guard(QWidget& p_objWidget);

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;
};
