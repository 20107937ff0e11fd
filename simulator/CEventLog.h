#pragma once

#include "simulator/CJsonObject.h"

#include <chrono>
#include <functional>
#include <iosfwd>

/// Writes events as JSON, one object a line, each flushed: whoever reads along is never behind.
///
/// Every line begins with "time", the seconds since the log was begun.
class CEventLog {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// @param p_objStream not owned, must outlive the log.
    explicit CEventLog(std::ostream& p_objStream, Clock p_fnNow = &std::chrono::steady_clock::now);

    void Write(const CJsonObject& p_objEvent);

private:
    std::ostream& m_objStream;
    Clock m_fnNow;
    std::chrono::steady_clock::time_point m_iBegin;
};
