#pragma once

#include "tests/ui/recorder/CCell.h"
#include "tests/ui/recorder/MFlows.h"

/// The cells of the flows that talk to the printer.
namespace MTalkingCells {

/// Everything that can happen to one of them, on each link.
Cells Of(const MFlows::Flow& p_objFlow);

}  // namespace MTalkingCells
