#pragma once

#include "tests/cli/faults/MFaultCells.h"

#include <string>
#include <vector>

/// What must be so of every cell, whatever is expected of it: what docs/json.md and docs/write.md
/// promise.
namespace MFaultRules {

/// What is not as it must be, a line each; empty when all is.
std::vector<std::string> Broken(const MFaultCells::Cell& p_objCell,
                                const MFaultCells::Played& p_objPlayed);

}  // namespace MFaultRules
