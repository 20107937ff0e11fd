#pragma once

#include "cli/CTable.h"
#include "jobs/CWriteReport.h"

#include <nlohmann/json.hpp>

/// What has come of a change of settings, in JSON and as a table for people.
namespace MWriteJson {

/// Adds "changed", "end", "before", "after", "plan" and "results".
void Fill(const CWriteReport& p_objReport, nlohmann::ordered_json& p_objJson);

/// A line a setting: before, afterwards, and what has become of it.
CTable Table(const CWriteReport& p_objReport);

}  // namespace MWriteJson
