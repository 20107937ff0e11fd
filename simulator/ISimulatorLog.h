#pragma once

#include <cstddef>
#include <string_view>

/// Where the simulator tells what passes.
class ISimulatorLog {
public:
    virtual ~ISimulatorLog() = default;

    /// One line, without its end, about the connection p_iConnection (counted from 1).
    virtual void Line(std::size_t p_iConnection, std::string_view p_strLine) = 0;
};
