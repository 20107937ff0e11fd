#pragma once

#include "platform/IClock.h"

#include <chrono>

/// Real time in a hurry: so many of its seconds pass in each second. It never stands still.
class CHastyClock : public IClock {
public:
    explicit CHastyClock(double p_dHaste)
        : m_dHaste(p_dHaste) {}

    [[nodiscard]] double SecondsSinceMidnight() const override {
        const std::chrono::duration<double> dSeconds = std::chrono::steady_clock::now() - m_iStart;
        return m_dHaste * dSeconds.count();
    }

private:
    double m_dHaste;
    std::chrono::steady_clock::time_point m_iStart = std::chrono::steady_clock::now();
};
