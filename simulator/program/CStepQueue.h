#pragma once

#include "simulator/CWireStep.h"

#include <QTimer>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

/// The steps of a session that are still to be carried out, each in its time.
class CStepQueue {
public:
    /// @param p_fnDue called from the event loop when a step that had to wait has become due.
    explicit CStepQueue(std::function<void()> p_fnDue);

    void Add(std::vector<CWireStep> p_objSteps);

    /// Takes the first step out when it is due. Otherwise nothing; the time that it has to wait
    /// begins to run then, if it did not yet.
    std::optional<CWireStep> TakeDue();

    void Clear();
    [[nodiscard]] std::size_t Size() const { return m_objSteps.size(); }

private:
    std::deque<CWireStep> m_objSteps;
    QTimer m_objDelay;  // runs while the first step waits
    bool m_bDelayDone = false;
};
