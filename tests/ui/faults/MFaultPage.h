#pragma once

#include "tests/ui/faults/MFaultRecord.h"

#include <string>

/// The window's part of the page of faults, docs/faults.md.
namespace MFaultPage {

/// The table of the outcomes for people: equal ones stand together.
std::string Part(const MFaultRecord::Outcomes& p_strOutcomes);

/// The page with p_strPart between the window's two marks, and all else as it is. Throws
/// std::runtime_error when they do not stand there.
std::string Replace(const std::string& p_strPage, const std::string& p_strPart);

}  // namespace MFaultPage
