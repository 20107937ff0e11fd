#pragma once

#include "flows/CDoingState.h"

/// What is being done, as the line at the foot of the window says it.
namespace MDoingText {

/// "READ 2 of 3", "head check: waiting for the answer (3 s)", "connecting"; in UTF-8. Empty for
/// nothing. A single step is not counted.
std::string Of(const CDoingState& p_objState);

}  // namespace MDoingText
