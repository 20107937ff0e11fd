#pragma once

#include "cli/IInterrupt.h"
#include "platform/IEventLoop.h"

/// An event loop in which Ctrl-C counts as closing: every wait ends, and what is open is closed.
class CInterruptLoop : public IEventLoop {
public:
    /// Neither is owned; both outlive this.
    CInterruptLoop(IEventLoop& p_objEventLoop, const IInterrupt& p_objInterrupt)
        : m_objEventLoop(p_objEventLoop)
        , m_objInterrupt(p_objInterrupt) {}

    void Yield() override { m_objEventLoop.Yield(); }
    void YieldFor(double p_dSeconds) override { m_objEventLoop.YieldFor(p_dSeconds); }
    [[nodiscard]] bool IsClosing() const override {
        return m_objInterrupt.IsPending() || m_objEventLoop.IsClosing();
    }
    void RequestClose() override { m_objEventLoop.RequestClose(); }

private:
    IEventLoop& m_objEventLoop;
    const IInterrupt& m_objInterrupt;
};
