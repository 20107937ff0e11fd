#pragma once

#include "link/ISessionEvents.h"

#include <cstdint>
#include <limits>

/// Tells how long something is awaited, each whole second of it, until its end.
class CWaitTold {
public:
    /// p_objEvents is not owned and outlives this.
    explicit CWaitTold(ISessionEvents& p_objEvents)
        : m_objEvents(p_objEvents) {}

    /// Whoever is told must not throw.
    ~CWaitTold() { End(); }
    CWaitTold(const CWaitTold&) = delete;
    CWaitTold& operator=(const CWaitTold&) = delete;

    /// p_dSeconds have passed. Fewer than none, as over midnight, tell nothing.
    void Tell(double p_dSeconds) {
        constexpr double dMost = std::numeric_limits<std::int16_t>::max();
        if (p_dSeconds < 0 || p_dSeconds > dMost) {
            return;
        }
        const auto iSeconds = static_cast<std::int16_t>(p_dSeconds);
        if (iSeconds != m_iTold) {
            m_iTold = iSeconds;
            m_objEvents.OnWaiting(iSeconds);
        }
    }

    void End() { Tell(0); }

private:
    ISessionEvents& m_objEvents;
    std::int16_t m_iTold = 0;
};
