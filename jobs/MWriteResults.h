#pragma once

#include "jobs/CWriteReport.h"
#include "jobs/CWriteRun.h"

/// What has become of each setting of a change.
namespace MWriteResults {

/// The results of all settings that were wanted, and of those that no answer reports and that had
/// to travel along.
///
/// @param p_objReport its end, plan and wanted settings; what was read last is p_objRun's.
/// @param p_objUnmet reported settings that the printer held otherwise than wanted, after all
///        commands were sent and before anything was undone.
std::map<std::string, CWriteReport::Result, std::less<>>
Of(const CWriteReport& p_objReport, const CWriteRun& p_objRun, const CWritePlan::Rows& p_objUnmet);

/// The same of a change that was not begun, or that was not necessary.
std::map<std::string, CWriteReport::Result, std::less<>> OfNone(const CWriteReport& p_objReport);

}  // namespace MWriteResults
