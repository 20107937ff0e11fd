#pragma once

#include <QObject>
#include <QPoint>

#include <vector>

class QMouseEvent;
class QWidget;

/// Keeps the second press of a double click from buttons: whatever the first one has done, such as
/// closing a box that stood over the button, the second was not meant for it.
///
/// A press counts as a second one within the system's double-click time and distance of any press
/// before it, on whatever of the program's windows that was; the times are those of the events, so
/// that it does not matter how long a press has waited. Each further press in such a row is one
/// too.
class CPressGuard : public QObject {
    Q_OBJECT

public:
    /// Watches all presses in the program from now on.
    CPressGuard();

    /// Guards p_objButton from now on.
    void Guard(const QWidget& p_objButton);

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    /// A press of the mouse, which several widgets hear of, one after the other.
    struct Press {
        quint64 m_iTime = 0;  ///< 0: nobody knows
        QPoint m_objPlace;    ///< on the screen
        bool m_bSecond = false;

        [[nodiscard]] bool IsSame(const QMouseEvent& p_objEvent) const;
        [[nodiscard]] bool IsFollowedBy(const QMouseEvent& p_objEvent) const;
    };

    void Note(const QMouseEvent& p_objEvent);

    std::vector<const QWidget*> m_objGuarded;
    Press m_objLast;
};
