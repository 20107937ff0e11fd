#pragma once

#include "tests/ui/faults/MFaultRecord.h"

#include <string>
#include <vector>

/// Rows of the page of faults.
namespace MFaultRow {

/// What has come of some flows, told as people read it.
struct Row {
    std::vector<std::string> m_strFlows;
    std::string m_strTold;
    std::string m_strSent;
    std::string m_strHolds;
    std::string m_strLink;
    std::string m_strFoot;
};

/// What stands in the columns behind the flows, for comparison and for the page.
std::string Columns(const Row& p_objRow);

/// The rows of cells of one fault on one link: flows that end alike share one.
std::vector<Row> Of(const std::vector<CFaultCell>& p_objCells,
                    const MFaultRecord::Outcomes& p_strOutcomes);

/// The flows of a row in words: "READ, LAN READ". p_strAll are those of all rows.
std::string Flows(const Row& p_objRow, const std::vector<std::string>& p_strAll);

}  // namespace MFaultRow
