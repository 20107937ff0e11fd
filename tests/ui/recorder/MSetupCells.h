#pragma once

#include "tests/ui/recorder/CCell.h"

/// The cells of the setup dialog and of opening a link.
namespace MSetupCells {

Cells All();

}  // namespace MSetupCells
