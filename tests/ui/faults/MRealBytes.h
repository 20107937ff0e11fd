#pragma once

#include "tests/ui/faults/CFaultCell.h"

#include <string>
#include <vector>

/// The cells of the fault table that are played with real bytes, too.
namespace MRealBytes {

struct Cell {
    LinkKind m_iLink;
    const char* m_strFault;
    const char* m_strButton;
};

/// Those of the network and of the serial line.
const std::vector<Cell>& Cells();

/// The cell of the table. Throws std::out_of_range when it has none such.
CFaultCell CellOf(const Cell& p_objCell);

/// "LanGetStatusSilent", for a test.
std::string NameOf(const Cell& p_objCell);

/// "GET STATUS: silent; READ: ..." for the page.
std::string InWords(LinkKind p_iLink);

}  // namespace MRealBytes
