#pragma once

#include <QObject>

class QComboBox;

/// Keeps from a list what was not meant for it: the mouse wheel that merely passes over it while a
/// page scrolls (it hears the wheel only while it has the focus), and a press that waited behind a
/// box (it opens only while the mouse button is down).
class CListGuard : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Guards p_cmb from now on, for as long as both live, and keeps the wheel from giving it the
    /// focus. A wheel that it does not hear goes on to its parent.
    void Guard(QComboBox& p_cmb);

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    static bool PassWheelOn(const QObject& p_objWatched, QEvent& p_objEvent);
};
