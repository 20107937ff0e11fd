#pragma once

#include <QObject>

/// Waits until a window of the program has been painted for the first time, writes what that took
/// to the file that VARDEN_FIRST_FRAME names, and ends the program there and then.
///
/// One JSON object: wall_ms since VARDEN_STARTED (nanoseconds of the system's monotonic clock),
/// processor_ms of the program, peak_kib of its memory, and how many controls of each kind its
/// windows have.
class CFirstFrame : public QObject {
public:
    explicit CFirstFrame(QObject* p_objParent);

protected:
    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    bool m_bPainted = false;
};
