#pragma once

#include "platform/IEventLoop.h"

/// The toolkit's event loop. Needs a QCoreApplication.
class CQtEventLoop : public IEventLoop {
public:
    void Yield() override;
    void YieldFor(double p_dSeconds) override;
    [[nodiscard]] bool IsClosing() const override { return m_bClosing; }
    void RequestClose() override { m_bClosing = true; }

private:
    static void Sleep(int p_iMilliseconds);

    bool m_bClosing = false;
};
