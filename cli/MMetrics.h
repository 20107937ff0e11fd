#pragma once

#include "jobs/CStatusReport.h"

#include <string>
#include <string_view>

/// What a monitoring system is told of a printer, in the text format of the node exporter's
/// collector.
namespace MMetrics {

/// The file of a printer's status. One that has not answered is not reachable, and nothing else is
/// told of it. p_strTarget is UTF-8, or bytes of any kind.
std::string Text(std::string_view p_strTarget, const CStatusReport& p_objReport);

}  // namespace MMetrics
