#pragma once

#include "tests/ui/faults/CFaultCell.h"
#include "tests/ui/faults/CSeen.h"

#include <string>
#include <vector>

/// What a person is told of each fault: a table written by hand, from what each box is for. It
/// knows nothing of the recorded outcomes.
namespace MFaultTold {

/// Boxes and beeps, a letter each, such as "bT" for the beep and the box of an answer that did not
/// come in time; "?" for a box that nobody knows.
std::string Letters(const std::vector<std::string>& p_strTold);

/// What the letters must match for the cell, as a regular expression. An empty one: nothing is
/// told.
std::string Expected(const CFaultCell& p_objCell);

}  // namespace MFaultTold
