#pragma once

#include "tests/golden/MGolden.h"
#include "tests/ui/CMainWindow.h"

#include <string>

/// A printer that somebody else has given other settings than its defaults.
namespace MTaughtPrinter {

// The commands that give it those settings.
inline const std::string Parameters = MGolden::All(MGolden::Parameters, &MGolden::Item::m_strOther);
inline const std::string Adjustments =
    MGolden::All(MGolden::Adjustments, &MGolden::Item::m_strOther);
inline const std::string Address = MGolden::With(MGolden::IpAddress, {{"IpAddress4", "078"}});

/// Expects every field of the parameter page to show what was read from it.
void ExpectPage(CMainWindow& p_objWindow);

}  // namespace MTaughtPrinter
