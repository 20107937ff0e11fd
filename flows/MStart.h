#pragma once

#include "flows/ISettingsPage.h"

/// What the window does once, before it is seen.
namespace MStart {

/// Shows the settings in the two pages, in this order. A page that fails, also by an exception,
/// ends it quietly: the window opens all the same, and READ or LOAD fill what is missing.
void ShowSettings(ISettingsPage& p_objParameterPage, ISettingsPage& p_objLanPage);

}  // namespace MStart
