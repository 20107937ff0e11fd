#pragma once

#include "link/ISessionEvents.h"

#include <cstddef>

/// Tells how far a flow of several exchanges is, from its first step to its end.
class CSteps {
public:
    /// p_objEvents is not owned and outlives this.
    CSteps(ISessionEvents& p_objEvents, std::size_t p_iSteps)
        : m_objEvents(p_objEvents)
        , m_iSteps(static_cast<std::int16_t>(p_iSteps)) {}

    /// Tells that the flow is over. Whoever is told must not throw.
    ~CSteps() { m_objEvents.OnStep(0, 0); }
    CSteps(const CSteps&) = delete;
    CSteps& operator=(const CSteps&) = delete;

    void Next() { m_objEvents.OnStep(++m_iStep, m_iSteps); }

private:
    ISessionEvents& m_objEvents;
    std::int16_t m_iStep = 0;
    std::int16_t m_iSteps;
};
