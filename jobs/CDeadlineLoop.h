#pragma once

#include "platform/IClock.h"
#include "platform/IEventLoop.h"

#include <optional>

/// An event loop whose waits come to an end by themselves: while a Limit lives and its time is
/// over, the program counts as closing, which ends every wait of the rooms below at once and sends
/// nothing more.
class CDeadlineLoop : public IEventLoop {
public:
    /// A limit, from its construction to its destruction. Limits nest; the one that is over first
    /// counts.
    class Limit {
    public:
        Limit(CDeadlineLoop& p_objLoop, double p_dSeconds);
        ~Limit();
        Limit(const Limit&) = delete;
        Limit& operator=(const Limit&) = delete;

    private:
        CDeadlineLoop& m_objLoop;
        std::optional<double> m_dOuter;
    };

    /// Neither is owned; both outlive this. A clock that starts again at midnight would make a
    /// limit longer: take a steady one.
    CDeadlineLoop(IEventLoop& p_objEventLoop, const IClock& p_objClock);

    /// True when a limit that lives is over.
    [[nodiscard]] bool IsTimeUp() const;

    void Yield() override { m_objEventLoop.Yield(); }
    /// No longer than the limit lasts.
    void YieldFor(double p_dSeconds) override;
    /// True as well while the time is up.
    [[nodiscard]] bool IsClosing() const override;
    void RequestClose() override { m_objEventLoop.RequestClose(); }

private:
    IEventLoop& m_objEventLoop;
    const IClock& m_objClock;
    std::optional<double> m_dEnd;  // by the clock
};
