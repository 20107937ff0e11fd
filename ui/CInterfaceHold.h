#pragma once

#include <QObject>
#include <QPointer>

class CHoldableList;

/// Keeps a person from choosing another interface while something runs: what is left of it would
/// go to the other printer.
///
/// The list stays enabled and keeps the focus, so that nothing jumps; it looks disabled, its
/// tooltip and its accessible description tell why, and it takes neither keys nor the mouse, nor
/// does it open for anybody.
class CInterfaceHold : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The list to hold, which may go before this does.
    void Watch(CHoldableList& p_cmb);

    /// Holds it from now on, or does not any more.
    void SetHeld(bool p_bHeld);

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    [[nodiscard]] bool Takes(const QEvent& p_objEvent) const;

    QPointer<CHoldableList> m_cmb;
    bool m_bHeld = false;
};
