#pragma once

#include "cli/IPause.h"

#include <functional>

/// A pause that is over at once, and tells that it was made.
class CFakePause : public IPause {
public:
    std::function<void(std::chrono::milliseconds)> m_fnOnWait;

    void Wait(std::chrono::milliseconds p_iTime) override {
        if (m_fnOnWait) {
            m_fnOnWait(p_iTime);
        }
    }
};
