#pragma once

#include "link/ISessionEvents.h"

#include <cstdint>

/// Whether an exchange with the printer runs, and with it whether another one may be begun.
///
/// A flow of several requests holds the busy state by a CBusy::Flow: the EndBusy of a single
/// request, or of an answer that arrives, then tells nobody; the flow's end does.
class CBusy {
public:
    /// Holds the busy state from construction to destruction, whatever happens between.
    class Flow {
    public:
        explicit Flow(CBusy& p_objBusy);
        ~Flow();
        Flow(const Flow&) = delete;
        Flow& operator=(const Flow&) = delete;

    private:
        CBusy& m_objBusy;
    };

    /// p_objEvents is not owned and outlives this.
    explicit CBusy(ISessionEvents& p_objEvents);

    /// Sets the busy flag and tells it.
    void BeginBusy();

    /// Clears the busy flag and tells it, unless a flow holds the state.
    void EndBusy();

    [[nodiscard]] bool IsBusy() const { return m_iBusy != 0; }

private:
    ISessionEvents& m_objEvents;
    std::int16_t m_iBusy = 0;   // -1 while an exchange runs
    std::int16_t m_iFlows = 0;  // flows that hold the state; they nest
};
