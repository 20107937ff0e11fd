#pragma once

#include "simulator/CJsonObject.h"

#include <cstddef>
#include <string_view>

/// Where the simulator tells what passes: in lines for people, and in events for programs.
///
/// Both concern the connection p_iConnection, counted from 1, or with 0 the printer itself.
class ISimulatorLog {
public:
    virtual ~ISimulatorLog() = default;

    /// One line, without its end.
    virtual void Line(std::size_t p_iConnection, std::string_view p_strLine) = 0;

    /// One event: its name, such as "received", and what belongs to it. Who listens to lines only
    /// lets it pass.
    virtual void Event(std::size_t /*p_iConnection*/, std::string_view /*p_strName*/,
                       const CJsonObject& /*p_objDetails*/) {}
};
