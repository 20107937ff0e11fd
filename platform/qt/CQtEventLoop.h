#pragma once

#include "platform/IEventLoop.h"

/// The toolkit's event loop. Needs a QCoreApplication.
class CQtEventLoop : public IEventLoop {
public:
    void Yield() override;
    [[nodiscard]] bool IsClosing() const override { return m_bClosing; }
    void RequestClose() override { m_bClosing = true; }

private:
    bool m_bClosing = false;
};
