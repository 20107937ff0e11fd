#pragma once

#include "jobs/CStatusReport.h"

#include <nlohmann/json.hpp>

#include <string>

/// How a printer's status is told.
namespace MStatusText {

/// Whether the program knows a code.
bool IsKnown(const std::string& p_strCode);

/// Code and text in a line: "00 ON LINE", "99 (an unknown code)".
std::string Line(const CStatusReport& p_objReport);

/// Puts "code", "text" and "known" into an object; null where no answer has told any.
void Put(const CStatusReport& p_objReport, nlohmann::ordered_json& p_objJson);

}  // namespace MStatusText
