#pragma once

#include <string>
#include <string_view>

/// The printer's status codes and what they are called.
namespace MStatus {

/// Looks a two-character status code up.
///
/// @param p_strCode two characters, as they stand in the answer.
/// @param p_strText receives the code's text; left as it is for "40", which has none, and for an
///        unknown code.
/// @param p_bReceived set to true for every known code, "40" among them; else left as it is.
/// @return true, always.
bool StatusText(std::string_view p_strCode, std::string& p_strText, bool& p_bReceived);

/// Whether a printer that tells this code has not done, or cannot do, what it was asked for. A code
/// that nobody knows is an error, too.
bool IsError(std::string_view p_strCode);

}  // namespace MStatus
