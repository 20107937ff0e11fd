#pragma once

#include <chrono>

/// Time that a command lets pass.
class IPause {
public:
    virtual ~IPause() = default;

    /// Comes back when so much time is over. Ctrl-C meanwhile ends the program at once.
    virtual void Wait(std::chrono::milliseconds p_iTime) = 0;
};
