#pragma once

#include <QEvent>
#include <QObject>

/// Keeps every window from being painted: nobody looks at them, and painting begins threads, of
/// which a copy of the process has none.
class CUnpainted : public QObject {
public:
    bool eventFilter(QObject* /*p_objWatched*/, QEvent* p_objEvent) override {
        return p_objEvent->type() == QEvent::UpdateRequest || p_objEvent->type() == QEvent::Paint;
    }
};
