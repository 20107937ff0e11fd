#include "tests/ui/faults/MFaultRow.h"

#include <algorithm>
#include <map>
#include <regex>
#include <utility>

namespace {

using MFaultRow::Row;
using Texts = std::vector<std::string>;

constexpr const char* Nothing = "\u2013";
constexpr const char* AsEver = "as without a fault";

/// Flows that often end alike, and what they are called together.
const std::vector<std::pair<std::string, Texts>>& Sets() {
    static const std::vector<std::pair<std::string, Texts>> objSets{
        {"the plain functions",
         {"GET STATUS", "DIAG PRINT", "TEST PRINT", "THRESHOLD", "RAM CLEAR"}},
        {"the sensor steps", {"REFLECT", "TRANS", "PAPER END"}},
        {"both READs", {"READ", "LAN READ"}},
        {"both SETs", {"SET", "LAN SET"}},
    };
    return objSets;
}

bool Contains(const Texts& p_strTexts, const std::string& p_strText) {
    return std::ranges::find(p_strTexts, p_strText) != p_strTexts.end();
}

std::string Replaced(const std::string& p_strText, const char* p_strPattern, const char* p_strNew) {
    static std::map<std::string, std::regex>
        objPatterns;  // to make one takes longer than to use it
    auto objPattern = objPatterns.find(p_strPattern);
    if (objPattern == objPatterns.end()) {
        objPattern = objPatterns.emplace(p_strPattern, std::regex(p_strPattern)).first;
    }
    return std::regex_replace(p_strText, objPattern->second, p_strNew);
}

std::string Told(const std::string& p_strOutcome) {
    std::string strTold = MFaultRecord::Part(p_strOutcome, "told");
    const std::string strLater = MFaultRecord::Part(p_strOutcome, "later");
    if (!strLater.empty()) {
        strTold = (strTold == "-" ? "" : strTold + " + ") + "when all is over: " + strLater;
    }
    strTold = Replaced(strTold, "beep \\+ ", "");
    strTold = Replaced(strTold, "(no icon|exclamation|critical)(, \"Failure\")?: ", "");
    strTold = Replaced(strTold, "Number=[0-9]+  .*? \\.\\.\\.", "the socket's words");
    // Fields that cannot show what came tell so one by one.
    strTold = Replaced(strTold, "(It is a value that exceeds the useful range\\. ?)( \\+ \\1)+",
                       "$1 (more than once)");
    return strTold == "-" ? Nothing : strTold;
}

/// How many commands went out, in words that hold for flows of one command and of several; a flow
/// of one fits more than one of them.
Texts Sent(const CFaultCell& p_objCell, const std::string& p_strOutcome) {
    const std::string strSent = MFaultRecord::Part(p_strOutcome, "sent");
    const int iSent = std::stoi(strSent);
    const std::size_t iPartly = strSent.find(", then no more");
    const std::string strPartly =
        iPartly == std::string::npos ? "" : ", and the first bytes of this one";
    Texts strWords;
    if (iSent == p_objCell.Commands()) {
        strWords.emplace_back("all");
    }
    if (p_objCell.m_iCommand == 0 && iSent == 0) {
        return {"none"};
    }
    if (iSent == p_objCell.m_iCommand) {
        strWords.push_back("to this one");
    }
    if (iSent + 1 == p_objCell.m_iCommand) {
        strWords.push_back("to the one before" + strPartly);
    }
    if (strWords.empty()) {
        strWords.push_back(iSent > p_objCell.Commands() ? "all, some twice"
                                                        : strSent.substr(0, strSent.find(',')));
    }
    return strWords;
}

/// What the items and the page hold, without the labels.
Texts Values(const CFaultCell& p_objCell, const std::string& p_strOutcome,
             const std::string& p_strSound) {
    const std::string strItems = MFaultRecord::Part(p_strOutcome, "items");
    const std::string strPage = MFaultRecord::Part(p_strOutcome, "page");
    const bool bReads = p_objCell.m_objFlow->m_bReads;
    if (bReads && strItems == MFaultRecord::Part(p_strSound, "items") &&
        strPage == MFaultRecord::Part(p_strSound, "page")) {
        return {AsEver};
    }
    // The groups that the first commands of a READ have brought.
    const bool bFormer =
        p_objCell.IsLater() && bReads && strItems == (p_objCell.IsLast() ? "0 1" : "0");
    if (strPage == "-" && (strItems == "-" || bFormer)) {
        const std::string strFormer = "as before, but for items that came before it";
        if (bFormer) {
            return {strFormer};
        }
        return bReads ? Texts{"as before", strFormer} : Texts{"as before", strFormer, AsEver};
    }
    return {"page " + Replaced(strPage, "^-$", "as before") + ", items of " +
            Replaced(Replaced(strItems, "-, ", ""), "otherwise", "another kind:")};
}

/// The same with what the labels say, where that is not what they say without a fault.
Texts Holds(const CFaultCell& p_objCell, const std::string& p_strOutcome,
            const std::string& p_strSound) {
    const std::string strStatus = MFaultRecord::Part(p_strOutcome, "status");
    const std::string strHead = MFaultRecord::Part(p_strOutcome, "head");
    const bool bSame = strStatus == MFaultRecord::Part(p_strSound, "status") &&
                       strHead == MFaultRecord::Part(p_strSound, "head");
    const bool bNone = strStatus == "\"\"" && strHead.empty();
    Texts strAll;
    for (const std::string& strValues : Values(p_objCell, p_strOutcome, p_strSound)) {
        if (bSame) {
            strAll.push_back(strValues);
        }
        if (bNone) {
            strAll.push_back(strValues + "; no status");
        } else if (!bSame) {
            strAll.push_back(strValues + "; status " + (strHead.empty() ? strStatus : strHead));
        }
    }
    return strAll;
}

std::string Link(const std::string& p_strOutcome, const std::string& p_strSound) {
    const std::string strLink = MFaultRecord::Part(p_strOutcome, "link");
    return strLink == MFaultRecord::Part(p_strSound, "link") ? "" : strLink;
}

std::string Foot(const std::string& p_strOutcome, const std::string& p_strSound) {
    std::string strFoot = MFaultRecord::Part(p_strOutcome, "foot");
    if (strFoot != MFaultRecord::Part(p_strSound, "foot")) {
        strFoot =
            Replaced(strFoot, "\"[^\"]* ended( at (group )?[0-9]( of [0-9])?)?: ", "\"... ended: ");
        strFoot = Replaced(strFoot, " \\(defaults, never read\\)", "");
        strFoot = Replaced(strFoot, "for groups? [0-9].*\"", "for its group\"");
        return strFoot;
    }
    return Nothing;
}

/// A cell's row, in which some words have a choice.
struct Ended {
    Row m_objRow;
    Texts m_strSent;
    Texts m_strHolds;
};

bool Fits(const Ended& p_objEnded, const Row& p_objRow) {
    return p_objRow.m_strTold == p_objEnded.m_objRow.m_strTold &&
           p_objRow.m_strLink == p_objEnded.m_objRow.m_strLink &&
           p_objRow.m_strFoot == p_objEnded.m_objRow.m_strFoot &&
           Contains(p_objEnded.m_strSent, p_objRow.m_strSent) &&
           Contains(p_objEnded.m_strHolds, p_objRow.m_strHolds);
}

}  // namespace

namespace MFaultRow {

std::string Columns(const Row& p_objRow) {
    std::string strLine = p_objRow.m_strLink;
    if (strLine.empty() || p_objRow.m_strFoot != Nothing) {
        strLine += (strLine.empty() ? "" : ", ") + p_objRow.m_strFoot;
    }
    return p_objRow.m_strTold + " | " + p_objRow.m_strSent + " | " + p_objRow.m_strHolds + " | " +
           strLine;
}

std::vector<Row> Of(const std::vector<CFaultCell>& p_objCells,
                    const MFaultRecord::Outcomes& p_strOutcomes) {
    std::vector<Ended> objEach;
    for (const CFaultCell& objCell : p_objCells) {
        const CFaultCell objNone{&MFaults::All().front(), objCell.m_objFlow, objCell.m_iLink, 1};
        const std::string& strOutcome = p_strOutcomes.at(MFaultRecord::Key(objCell));
        const std::string& strSound = p_strOutcomes.at(MFaultRecord::Key(objNone));
        objEach.push_back({{{MFaultCells::NameOf(*objCell.m_objFlow)},
                            Told(strOutcome),
                            {},
                            {},
                            Link(strOutcome, strSound),
                            Foot(strOutcome, strSound)},
                           Sent(objCell, strOutcome),
                           Holds(objCell, strOutcome, strSound)});
    }
    // Those that leave a choice come last: they join others.
    std::ranges::stable_sort(objEach, {}, [](const Ended& p_objEnded) {
        return p_objEnded.m_strSent.size() * p_objEnded.m_strHolds.size();
    });
    std::vector<Row> objRows;
    for (const Ended& objEnded : objEach) {
        const auto objSame = std::ranges::find_if(
            objRows, [&](const Row& p_objRow) { return Fits(objEnded, p_objRow); });
        if (objSame == objRows.end()) {
            objRows.push_back(objEnded.m_objRow);
            objRows.back().m_strSent = objEnded.m_strSent.front();
            objRows.back().m_strHolds = objEnded.m_strHolds.front();
        } else if (!Contains(objSame->m_strFlows, objEnded.m_objRow.m_strFlows.front())) {
            objSame->m_strFlows.push_back(objEnded.m_objRow.m_strFlows.front());
        }
    }
    return objRows;
}

std::string Flows(const Row& p_objRow, const std::vector<std::string>& p_strAll) {
    if (p_objRow.m_strFlows.size() == p_strAll.size()) {
        return "all";
    }
    Texts strRest = p_objRow.m_strFlows;
    Texts strNames;
    for (const auto& [strSet, strFlows] : Sets()) {
        Texts strMeet = strFlows;
        std::erase_if(strMeet, [&](const auto& p_str) { return !Contains(p_strAll, p_str); });
        const bool bWhole =
            strMeet.size() > 1 && std::ranges::all_of(strMeet, [&](const auto& p_str) {
                return Contains(strRest, p_str);
            });
        if (bWhole) {
            std::erase_if(strRest, [&](const auto& p_str) { return Contains(strMeet, p_str); });
            strNames.push_back(strSet);
        }
    }
    strNames.insert(strNames.end(), strRest.begin(), strRest.end());
    std::string strText;
    for (const std::string& strName : strNames) {
        strText += (strText.empty() ? "" : ", ") + strName;
    }
    return strText;
}

}  // namespace MFaultRow
