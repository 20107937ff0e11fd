#pragma once

#include "ui/MButtonHandlers.h"

#include <vector>

class CLineTeller;
class CPageTeller;

/// What the buttons start, by the names that the line at the foot of the window has for it.
namespace MDoing {

/// The rows, with handlers that have the line tell what they do while they do it. Those of buttons
/// that start nothing with the printer stay as they are. p_objLine and p_objPages are not owned and
/// outlive the rows.
std::vector<MButtonHandlers::Row> Told(std::vector<MButtonHandlers::Row> p_objRows,
                                       CLineTeller& p_objLine, CPageTeller& p_objPages);

}  // namespace MDoing
