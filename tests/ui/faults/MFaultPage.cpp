#include "tests/ui/faults/MFaultPage.h"

#include "tests/ui/faults/MFaultRow.h"
#include "tests/ui/faults/MRealBytes.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <vector>

namespace {

constexpr const char* BeginMark = "<!-- window: begin -->\n";
constexpr const char* EndMark = "<!-- window: end -->";
using MFaultRow::Row;

/// The cells of a fault on a link: those at first commands, those in the middle of a flow, and
/// those at last ones.
struct Cells {
    std::string m_strFault;
    std::vector<CFaultCell> m_objFirst;
    std::vector<CFaultCell> m_objMiddle;
    std::vector<CFaultCell> m_objLast;
};

std::vector<Cells> ByFault(LinkKind p_iLink) {
    std::vector<Cells> objFaults;
    for (const MFaults::Fault& objFault : MFaults::All()) {
        objFaults.push_back({objFault.m_strName, {}, {}, {}});
    }
    for (const MFlows::Flow& objFlow : MFlows::Talking()) {
        for (const CFaultCell& objCell : MFaultCells::Of(objFlow, p_iLink)) {
            Cells& objFault =
                objFaults[static_cast<std::size_t>(objCell.m_objFault - MFaults::All().data())];
            (objCell.IsLast()    ? objFault.m_objLast
             : objCell.IsLater() ? objFault.m_objMiddle
                                 : objFault.m_objFirst)
                .push_back(objCell);
        }
    }
    std::erase_if(objFaults, [](const Cells& p_objFault) { return p_objFault.m_objFirst.empty(); });
    return objFaults;
}

/// What stands behind a fault's name; faults with the same lines share them.
struct Block {
    std::string m_strFaults;
    std::vector<std::string> m_strLines;
};

/// What all rows say of the link is said of the fault.
std::string TakeLink(std::vector<Row>& p_objRows) {
    const std::string strLink = p_objRows.front().m_strLink;
    if (!std::ranges::all_of(p_objRows,
                             [&](const Row& p_objRow) { return p_objRow.m_strLink == strLink; })) {
        return {};
    }
    for (Row& objRow : p_objRows) {
        objRow.m_strLink.clear();
    }
    return strLink.empty() ? "" : " (" + strLink + ")";
}

Block BlockOf(const std::string& p_strName, std::vector<Row> p_objRows) {
    Block objBlock{p_strName + TakeLink(p_objRows), {}};
    std::vector<std::string> strAll;
    for (const Row& objRow : p_objRows) {
        strAll.insert(strAll.end(), objRow.m_strFlows.begin(), objRow.m_strFlows.end());
    }
    for (const Row& objRow : p_objRows) {
        objBlock.m_strLines.push_back(MFaultRow::Flows(objRow, strAll) + " | " +
                                      MFaultRow::Columns(objRow));
    }
    return objBlock;
}

bool EachFlowOnce(const std::vector<Row>& p_objRows) {
    std::vector<std::string> strAll;
    for (const Row& objRow : p_objRows) {
        strAll.insert(strAll.end(), objRow.m_strFlows.begin(), objRow.m_strFlows.end());
    }
    std::ranges::sort(strAll);
    return std::ranges::adjacent_find(strAll) == strAll.end();
}

/// One block where it comes to the same at which command it strikes, or else up to three.
std::vector<Block> Blocks(const Cells& p_objCells, const MFaultRecord::Outcomes& p_strOutcomes) {
    std::vector<CFaultCell> objAll = p_objCells.m_objFirst;
    objAll.insert(objAll.end(), p_objCells.m_objMiddle.begin(), p_objCells.m_objMiddle.end());
    objAll.insert(objAll.end(), p_objCells.m_objLast.begin(), p_objCells.m_objLast.end());
    const std::vector<Row> objRows = MFaultRow::Of(objAll, p_strOutcomes);
    if (EachFlowOnce(objRows)) {
        return {BlockOf(p_objCells.m_strFault, objRows)};
    }
    std::vector<Block> objBlocks;
    const auto fnAdd = [&](const std::vector<CFaultCell>& p_objOf, const char* p_strWhere) {
        if (!p_objOf.empty()) {
            objBlocks.push_back(
                BlockOf(p_objCells.m_strFault + p_strWhere, MFaultRow::Of(p_objOf, p_strOutcomes)));
        }
    };
    fnAdd(p_objCells.m_objFirst, "");
    fnAdd(p_objCells.m_objMiddle, ", at a command in the middle");
    fnAdd(p_objCells.m_objLast, ", at the last command");
    return objBlocks;
}

std::string Table(LinkKind p_iLink, const MFaultRecord::Outcomes& p_strOutcomes) {
    std::vector<Block> objBlocks;
    for (const Cells& objCells : ByFault(p_iLink)) {
        for (const Block& objBlock : Blocks(objCells, p_strOutcomes)) {
            const auto objSame =
                std::ranges::find(objBlocks, objBlock.m_strLines, &Block::m_strLines);
            if (objSame != objBlocks.end()) {
                objSame->m_strFaults += "; " + objBlock.m_strFaults;
            } else {
                objBlocks.push_back(objBlock);
            }
        }
    }
    std::string strTable =
        "| Fault | Flows | Boxes | Commands that go out | Page and items | The line at the foot |\n"
        "|---|---|---|---|---|---|\n";
    for (const Block& objBlock : objBlocks) {
        std::string strFirst = objBlock.m_strFaults;
        for (const std::string& strLine : objBlock.m_strLines) {
            strTable += "| " + strFirst + " | " + strLine + " |\n";
            strFirst.clear();
        }
    }
    return strTable;
}

std::string Count(LinkKind p_iLink) {
    std::size_t iCells = 0;
    for (const MFlows::Flow& objFlow : MFlows::Talking()) {
        iCells += MFaultCells::Of(objFlow, p_iLink).size();
    }
    return std::to_string(iCells);
}

}  // namespace

namespace MFaultPage {

std::string Part(const MFaultRecord::Outcomes& p_strOutcomes) {
    std::string strPart =
        std::to_string(MFaultCells::All().size()) +
        " cells, each a fault that meets a flow. Some are played with real bytes, too:\n\n"
        "- over TCP (`FmMainFaultBytesTest`): " +
        MRealBytes::InWords(LinkKind::Lan) +
        "\n- on a pseudo-terminal (the same test): " + MRealBytes::InWords(LinkKind::Com) +
        "\n- on an emulated USB, with the real library (`FmMainUsbFaultsTest`, "
        "`FmMainUsbUnplugTest`): every flow and a printer that is not there, held, of another "
        "maker or without identification; that is silent, slow, late, in pieces, cut short or full "
        "of junk; that takes nothing; that is pulled out at each moment\n";
    for (const LinkKind iLink : {LinkKind::Lan, LinkKind::Com, LinkKind::Usb}) {
        strPart += std::string("\n### ") + MFlows::NameOf(iLink) + " (" + Count(iLink) +
                   " cells)\n\n" + Table(iLink, p_strOutcomes);
    }
    return strPart;
}

std::string Replace(const std::string& p_strPage, const std::string& p_strPart) {
    const std::size_t iBegin = p_strPage.find(BeginMark);
    const std::size_t iEnd = p_strPage.find(EndMark);
    if (iBegin == std::string::npos || iEnd == std::string::npos || iEnd < iBegin) {
        throw std::runtime_error("the window's marks do not stand in the page");
    }
    return p_strPage.substr(0, iBegin) + BeginMark + p_strPart + p_strPage.substr(iEnd);
}

}  // namespace MFaultPage
