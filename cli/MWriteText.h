#pragma once

#include "cli/CCommandError.h"
#include "cli/CTarget.h"
#include "jobs/CWriteReport.h"
#include "platform/IDeviceAccess.h"

#include <optional>
#include <string>

/// The words for what has come of a change of settings.
namespace MWriteText {

/// For scripts: "changed", "undone" …
const char* Word(CWriteReport::End p_iEnd);

/// For scripts and people: "same", "changed", "unverifiable", "refused", "mismatch", "restored",
/// "lost".
const char* Word(CWriteReport::Result p_iResult);

/// The failure that a report tells; nothing when it tells none.
/// @param p_strJournal where the journal of the change stands.
/// @param p_objRefusal why there was no printer to be read in the end, where that can be told.
std::optional<CCommandError> Error(const CWriteReport& p_objReport, const CTarget& p_objTarget,
                                   const std::string& p_strJournal,
                                   const IDeviceAccess& p_objAccess,
                                   const std::optional<CCommandError>& p_objRefusal = {});

}  // namespace MWriteText
