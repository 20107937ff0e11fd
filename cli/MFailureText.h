#pragma once

#include "cli/CCommandError.h"
#include "cli/CTarget.h"
#include "jobs/CReadReport.h"
#include "link/CFailure.h"
#include "platform/IDeviceAccess.h"

/// The words for what has gone wrong between the program and a printer: what, why, and the way out.
/// One table, a row a failure.
namespace MFailureText {

/// The status by which a printer says that it does not carry a command, or a request, out.
inline constexpr const char* CommandError = "06";

/// The failure of a command.
///
/// Its code is NotReachable when nothing can have been sent, else Failed.
/// @param p_objFailure any kind but None.
/// @param p_bSent something has gone out to the printer.
/// @param p_objAccess is asked why a device cannot be had.
CCommandError Of(const CFailure& p_objFailure, bool p_bSent, const CTarget& p_objTarget,
                 const IDeviceAccess& p_objAccess);

/// The same of a reading that has failed. A printer that has told its status in place of settings
/// has refused to tell them, or cannot.
CCommandError OfRead(const CReadReport& p_objReport, const CTarget& p_objTarget,
                     const IDeviceAccess& p_objAccess);

/// The same of a reading that has brought everything that was asked for, but no values of
/// p_strNames.
CCommandError OfUnreadable(const std::vector<std::string>& p_strNames,
                           const std::string& p_strTarget);

}  // namespace MFailureText
