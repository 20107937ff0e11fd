#pragma once

#include "tests/ui/recorder/CCell.h"

/// The cells in which a button is pressed while another flow waits.
namespace MInsideCells {

/// Every button inside the first wait of LAN SET, which leaves them enabled.
Cells InsideLanSet();

/// Every button inside the pause of the head check.
Cells InsideHeadCheck();

}  // namespace MInsideCells
