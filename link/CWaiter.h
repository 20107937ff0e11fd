#pragma once

#include "platform/IClock.h"
#include "platform/IEventLoop.h"

#include <cstdint>
#include <exception>

/// How a handler waits: yields, the time of day, and the three reasons to stop at once: the
/// program closes, the handler's turn is over, or an event that ran meanwhile has failed.
class CWaiter {
public:
    /// One handler's turn, from its first to its last step.
    ///
    /// Turns nest: where the buttons stay enabled, a handler can be started while another one
    /// waits. The later one then runs to its end inside the earlier one's wait. What becomes of
    /// the earlier one is its own to say.
    class Turn {
    public:
        /// What a later turn does to this one.
        enum class Later : std::uint8_t {
            EndsIt,    ///< it is over: whatever it would still send or wait for is given up
            DelaysIt,  ///< it goes on where it was, unless the later one has taken over
        };

        explicit Turn(CWaiter& p_objWaiter, Later p_iLater = Later::EndsIt);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

    private:
        friend class CWaiter;

        CWaiter& m_objWaiter;
        Turn* m_objOuter;
        std::exception_ptr m_objOuterFault;
        Later m_iLater;
        bool m_bOver = false;
    };

    /// The time that the running handler has been waiting for something. What a handler inside of
    /// the wait takes does not count: the time begins again behind it.
    class Stopwatch {
    public:
        explicit Stopwatch(const CWaiter& p_objWaiter);

        /// True when a handler has run inside since this was made, or since the last Elapsed.
        [[nodiscard]] bool IsInterrupted() const;

        /// In seconds; negative over midnight.
        double Elapsed();

    private:
        const CWaiter& m_objWaiter;
        std::int64_t m_iInterruptions;
        double m_dStart;
    };

    /// Neither is owned; both outlive this.
    CWaiter(IEventLoop& p_objEventLoop, const IClock& p_objClock);

    /// Seconds since midnight.
    [[nodiscard]] double Now() const { return m_objClock.SecondsSinceMidnight(); }

    /// Lets events run, or sleeps for a moment. False when the wait must end.
    /// Rethrows, once, what an event has left with StoreFault.
    bool Yield();

    /// The same in a wait that is over in p_dSeconds, when nothing comes before: may sleep until
    /// then.
    bool YieldFor(double p_dSeconds);

    /// True when the running handler may neither send nor wait any more.
    [[nodiscard]] bool MustStop() const;

    /// True from the moment the program closes.
    [[nodiscard]] bool IsClosing() const { return m_objEventLoop.IsClosing(); }

    /// The running handler does itself what is left to do for all that wait further out: their
    /// turns are over.
    void TakeOver();

    /// Something has stood in front of the window that is no handler. To a turn that a later one
    /// only delays it counts like one, to any other it is part of the wait.
    void NoteAside();

    /// Keeps the exception that is being handled for the innermost handler, which waits. Without
    /// one it is dropped.
    void StoreFault();

private:
    /// What is to be done behind each yield.
    bool GoesOn();

    IEventLoop& m_objEventLoop;
    const IClock& m_objClock;
    Turn* m_objRunning = nullptr;       // the innermost turn; not owned
    std::int64_t m_iInterruptions = 0;  // handlers begun so far, and what counts like one
    std::exception_ptr m_objFault;      // of the running turn
};
