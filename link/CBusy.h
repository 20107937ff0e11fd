#pragma once

#include "link/IExchangeView.h"

#include <cstdint>

/// Whether an exchange with the printer runs, and with it whether the buttons are disabled.
///
/// A flow of several requests holds the busy state by a CBusy::Flow: the EndBusy of a single
/// request, or of an answer that arrives, then leaves the buttons disabled until the flow's end.
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

    /// p_objView is not owned and outlives this.
    explicit CBusy(IExchangeView& p_objView);

    /// Sets the busy flag and disables the buttons.
    void BeginBusy();

    /// Clears the busy flag and enables the buttons, unless a flow holds them.
    void EndBusy();

    [[nodiscard]] bool IsBusy() const { return m_iBusy != 0; }

private:
    IExchangeView& m_objView;
    std::int16_t m_iBusy = 0;   // -1 while an exchange runs
    std::int16_t m_iFlows = 0;  // flows that hold the state; they nest
};
