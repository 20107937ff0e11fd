#pragma once

#include "cli/IPause.h"

#include <thread>

/// Time that really passes.
class CPause : public IPause {
public:
    void Wait(std::chrono::milliseconds p_iTime) override { std::this_thread::sleep_for(p_iTime); }
};
