#pragma once

#include "tests/ui/CMainWindow.h"

/// A printer that somebody else has given other settings than its defaults.
namespace MTaughtPrinter {

// The commands that give it those settings.
inline constexpr const char* Parameters = "{Z2;1,A1501240-3532B0D7F111A4111121111013|}";
inline constexpr const char* Adjustments = "{Z2;2,+123-045-67+055-03+09-12-153107|}";
inline constexpr const char* Address = "{IP;2,192,168,010,078|}";

/// Expects every field of the parameter page to show what was read from it.
void ExpectPage(CMainWindow& p_objWindow);

}  // namespace MTaughtPrinter
