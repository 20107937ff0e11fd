#pragma once

#include "platform/IClock.h"
#include "platform/IEventLoop.h"

#include <cstdint>
#include <exception>

/// How a handler waits: yields, the time of day, and the three reasons to stop at once: the
/// program closes, a later handler has taken over, or an event that ran meanwhile has failed.
class CWaiter {
public:
    /// One handler's turn, from its first to its last step.
    ///
    /// Turns nest: where the buttons stay enabled, a handler can be started while another one
    /// waits. The later one then runs to its end inside the earlier one's wait, and the earlier
    /// one is over: whatever it would still send or wait for is given up.
    class Turn {
    public:
        explicit Turn(CWaiter& p_objWaiter);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        CWaiter& m_objWaiter;
        std::int64_t m_iOuter;
    };

    /// Neither is owned; both outlive this.
    CWaiter(IEventLoop& p_objEventLoop, const IClock& p_objClock);

    /// Seconds since midnight.
    [[nodiscard]] double Now() const { return m_objClock.SecondsSinceMidnight(); }

    /// Lets events run, or sleeps for a moment. False when the wait must end.
    /// Rethrows, once, what an event has left with StoreFault.
    bool Yield();

    /// True when the running handler may neither send nor wait any more.
    [[nodiscard]] bool MustStop() const;

    /// Keeps the exception that is being handled for the handler that waits. Without one it is
    /// dropped.
    void StoreFault();

private:
    IEventLoop& m_objEventLoop;
    const IClock& m_objClock;
    std::int64_t m_iLatest = 0;   // number of the turn that began last
    std::int64_t m_iCurrent = 0;  // number of the turn that runs, 0 for none
    std::exception_ptr m_objFault;
};
