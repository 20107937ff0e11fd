#include "tests/ui/faults/MRealBytes.h"

#include <cctype>
#include <map>
#include <stdexcept>

namespace MRealBytes {

const std::vector<Cell>& Cells() {
    using enum LinkKind;
    static const std::vector<Cell> objCells{
        {Lan, "none", "btnRead"},
        {Lan, "silent", "btnSet"},
        {Lan, "single bytes", "btnRead"},
        {Lan, "cut short: half of it", "btnRead"},
        {Lan, "two answers at once", "btnRead"},
        {Lan, "another group's answer", "btnRead"},
        {Lan, "the status 99, which nobody knows", "btnGetStatus"},
        {Lan, "fields that are no numbers", "btnRead"},
        {Lan, "junk of 1 MB", "btnRead"},
        {Lan, "an endless stream of junk", "btnRead"},
        {Lan, "closed or reset inside of the answer", "btnGetStatus"},
        {Lan, "closed or reset before the answer", "btnGetStatus"},
        {Com, "none", "btnRead"},
        {Com, "silent", "btnRead"},
        {Com, "single bytes", "btnRead"},
        {Com, "cut short: half of it", "btnRead"},
        {Com, "two answers at once", "btnRead"},
        {Com, "another group's answer", "btnRead"},
        {Com, "fields that are no numbers", "btnRead"},
        {Com, "junk of 1 KB", "btnRead"},
        {Com, "pulled out before the answer", "btnRead"},
    };
    return objCells;
}

CFaultCell CellOf(const Cell& p_objCell) {
    for (const MFlows::Flow& objFlow : MFlows::Talking()) {
        if (std::string(objFlow.m_strButton) != p_objCell.m_strButton) {
            continue;
        }
        for (const CFaultCell& objCell : MFaultCells::Of(objFlow, p_objCell.m_iLink)) {
            if (objCell.m_objFault->m_strName == p_objCell.m_strFault) {
                return objCell;
            }
        }
    }
    throw std::out_of_range(std::string("no such cell: ") + p_objCell.m_strFault);
}

std::string NameOf(const Cell& p_objCell) {
    std::string strName =
        MFlows::NameOf(p_objCell.m_iLink) + std::string(p_objCell.m_strButton + 3);
    bool bUpper = true;
    for (const char* i = p_objCell.m_strFault; *i != '\0'; ++i) {
        const bool bLetter = std::isalnum(static_cast<unsigned char>(*i)) != 0;
        if (bLetter) {
            strName +=
                bUpper ? static_cast<char>(std::toupper(static_cast<unsigned char>(*i))) : *i;
        }
        bUpper = !bLetter;
    }
    return strName;
}

std::string InWords(LinkKind p_iLink) {
    std::map<std::string, std::string> strFaults;
    for (const Cell& objCell : Cells()) {
        if (objCell.m_iLink == p_iLink) {
            std::string& strFault = strFaults[MFaultCells::NameOf(*CellOf(objCell).m_objFlow)];
            strFault += (strFault.empty() ? "" : ", ") + std::string(objCell.m_strFault);
        }
    }
    std::string strWords;
    for (const auto& [strFlow, strFault] : strFaults) {
        strWords += (strWords.empty() ? "" : "; ") + strFlow + ": " + strFault;
    }
    return strWords;
}

}  // namespace MRealBytes
