#pragma once

#include "platform/IEventLoop.h"

/// The toolkit's event loop. Needs a QCoreApplication.
class CQtEventLoop : public IEventLoop {
public:
    /// How long YieldFor sleeps at most unless told otherwise: a signal, which is no event, is
    /// noticed as late as that.
    static constexpr int ShortMilliseconds = 32;

    /// @param p_iLongestMilliseconds how long YieldFor sleeps at most, from 1 on.
    explicit CQtEventLoop(int p_iLongestMilliseconds = ShortMilliseconds)
        : m_iLongestMilliseconds(p_iLongestMilliseconds) {}

    void Yield() override;
    void YieldFor(double p_dSeconds) override;
    [[nodiscard]] bool IsClosing() const override { return m_bClosing; }
    void RequestClose() override { m_bClosing = true; }

private:
    static void Sleep(int p_iMilliseconds);

    int m_iLongestMilliseconds;
    bool m_bClosing = false;
};
