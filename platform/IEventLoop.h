#pragma once

/// The program's one event loop, as seen by code that waits inside a handler.
///
/// A wait is a loop: yield, look at the clock, look at what is waited for. It must end at once
/// when IsClosing becomes true.
class IEventLoop {
public:
    virtual ~IEventLoop() = default;

    /// Takes every event that is pending; when there is none, sleeps until one comes, at most a
    /// few milliseconds, so that the caller can look at the clock. Handlers run inside.
    virtual void Yield() = 0;

    /// The same for a wait that is over in p_dSeconds, when nothing comes before: sleeps until
    /// then, but not so long that whoever waits would notice IsClosing late. Wakes on time, to the
    /// millisecond, and rather behind it than before. A loop that does not know better yields.
    virtual void YieldFor(double /*p_dSeconds*/) { Yield(); }

    /// True from the moment the main window closes. Every wait ends then, nothing more is sent
    /// and no box is shown.
    [[nodiscard]] virtual bool IsClosing() const = 0;

    /// The main window closes: IsClosing is true from here on, for good.
    virtual void RequestClose() = 0;
};
