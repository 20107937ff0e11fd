#pragma once

#include "link/CFailure.h"

#include <string>

/// Why something has failed, in a few words, as they stand in the line at the foot of the window.
namespace MCauseText {

/// "no answer", "no permission for /dev/ttyUSB0 (group dialout)"; in UTF-8. Empty for a failure of
/// kind None.
std::string Of(const CFailure& p_objFailure);

}  // namespace MCauseText
