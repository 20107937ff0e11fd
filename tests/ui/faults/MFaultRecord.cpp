#include "tests/ui/faults/MFaultRecord.h"

#include <regex>
#include <sstream>
#include <vector>

namespace {

constexpr const char* HeadingMark = "== ";
constexpr const char* FlowEnd = ": ";
constexpr const char* PartEnd = " | ";
constexpr const char* KeyBetween = " / ";

std::string Joined(const std::vector<std::string>& p_strTexts, const char* p_strBetween) {
    std::string strJoined;
    for (const std::string& strText : p_strTexts) {
        strJoined += (strJoined.empty() ? "" : p_strBetween) + strText;
    }
    return strJoined.empty() ? "-" : strJoined;
}

/// "{Z2;1,0021...|}" is "Z2;1".
std::string Head(const std::string& p_strCommand) {
    return p_strCommand.substr(1, p_strCommand.find_first_of(",|") - 1);
}

/// "box, critical, "Failure": Device Time Out !!" without what all boxes have; of the socket's own
/// words the first line, when the others are there.
std::string Box(const std::string& p_strTold) {
    static const std::regex objTitled("^box, (.*), \"Varden Setting Tool\": (.*)$");
    static const std::regex objBox("^box, (.*: )(.*)$");
    static const std::regex objSocket(
        "(Number=[0-9]+  .*)<0D><0A>Scode=[0-9]+<0D><0A>Source=[A-Za-z]*<0D><0A>HelpFile=[a-z.]*"
        "<0D><0A>HelpContext=[0-9]+<0D><0A>CancelDisplay=(True|False)$");
    const std::string strBox =
        std::regex_replace(std::regex_replace(p_strTold, objTitled, "$1: $2"), objBox, "$1$2");
    return std::regex_replace(strBox, objSocket, "$1 ...");
}

std::vector<std::string> Boxes(const std::vector<std::string>& p_strTold) {
    std::vector<std::string> strBoxes;
    for (const std::string& strTold : p_strTold) {
        strBoxes.push_back(Box(strTold));
    }
    return strBoxes;
}

std::string Sent(const CFaultCell& p_objCell, const CSeen& p_objSeen) {
    std::vector<std::string> strHeads;
    for (const std::string& strCommand : p_objSeen.m_strSent) {
        strHeads.push_back(Head(strCommand));
    }
    std::string strSent = std::to_string(strHeads.size()) + " of " +
                          std::to_string(p_objCell.Commands()) + ", " + Joined(strHeads, " ");
    return strSent +
           (p_objSeen.m_strPartly.empty() ? "" : ", then no more than " + p_objSeen.m_strPartly);
}

std::string Items(const CSeen& p_objSeen) {
    std::string strItems = Joined(p_objSeen.m_strRead, " ");
    if (!p_objSeen.m_strOther.empty()) {
        strItems += ", otherwise " + Joined(p_objSeen.m_strOther, " ");
    }
    return strItems;
}

std::string Pages(const CSeen& p_objSeen) {
    if (p_objSeen.m_strLanPage == "-") {
        return p_objSeen.m_strParameterPage;
    }
    const std::string strLan = p_objSeen.m_strLanPage + " (LAN)";
    return p_objSeen.m_strParameterPage == "-" ? strLan
                                               : p_objSeen.m_strParameterPage + ", " + strLan;
}

std::string Seconds(int p_iHalfSeconds) {
    return std::to_string(p_iHalfSeconds / 2) + (p_iHalfSeconds % 2 != 0 ? ".5 s" : ".0 s");
}

}  // namespace

namespace MFaultRecord {

std::string Outcome(const CFaultCell& p_objCell, const CSeen& p_objSeen) {
    std::vector<std::string> strParts{
        "told " + Joined(Boxes(p_objSeen.m_strTold), " + "),
        "sent " + Sent(p_objCell, p_objSeen),
        "items " + Items(p_objSeen),
        "page " + Pages(p_objSeen),
        "status \"" + p_objSeen.m_strStatus + '"',
    };
    if (!p_objSeen.m_strHeadCheck.empty()) {
        strParts.push_back("head \"" + p_objSeen.m_strHeadCheck + '"');
    }
    strParts.push_back("link \"" + p_objSeen.m_strLink + '"');
    strParts.push_back("foot \"" + p_objSeen.m_strPage + '"');
    strParts.push_back("takes " + Seconds(p_objSeen.m_iHalfSeconds));
    if (!p_objSeen.m_strLater.empty()) {
        strParts.push_back("later " + Joined(Boxes(p_objSeen.m_strLater), " + "));
    }
    if (p_objSeen.m_iRefused > 0) {
        strParts.emplace_back("pressed, disabled");
    }
    if (p_objSeen.m_bClosed) {
        strParts.emplace_back("closed, all ended");
    }
    return Joined(strParts, PartEnd);
}

std::string Key(const CFaultCell& p_objCell) {
    return p_objCell.Heading() + KeyBetween + MFaultCells::NameOf(*p_objCell.m_objFlow);
}

std::string Text(const Outcomes& p_strOutcomes) {
    std::vector<std::string> strHeadings;
    std::map<std::string, std::string> strSections;
    for (const CFaultCell& objCell : MFaultCells::All()) {
        std::string& strSection = strSections[objCell.Heading()];
        if (strSection.empty()) {
            strHeadings.push_back(objCell.Heading());
        }
        strSection += MFaultCells::NameOf(*objCell.m_objFlow) + FlowEnd +
                      p_strOutcomes.at(Key(objCell)) + "\n";
    }
    std::string strText;
    for (const std::string& strHeading : strHeadings) {
        strText += HeadingMark + strHeading + "\n" + strSections.at(strHeading);
    }
    return strText;
}

Outcomes FromText(const std::string& p_strText) {
    Outcomes strOutcomes;
    std::string strHeading;
    std::istringstream objStream(p_strText);
    for (std::string strLine; std::getline(objStream, strLine);) {
        if (strLine.starts_with(HeadingMark)) {
            strHeading = strLine.substr(std::string(HeadingMark).size());
        } else if (const std::size_t iEnd = strLine.find(FlowEnd); iEnd != std::string::npos) {
            strOutcomes[strHeading + KeyBetween + strLine.substr(0, iEnd)] =
                strLine.substr(iEnd + 2);
        }
    }
    return strOutcomes;
}

std::string Part(const std::string& p_strOutcome, const std::string& p_strName) {
    const std::string strOutcome = PartEnd + p_strOutcome + PartEnd;
    const std::size_t iBegin = strOutcome.find(PartEnd + p_strName + " ");
    if (iBegin == std::string::npos) {
        return {};
    }
    const std::size_t iText = iBegin + 3 + p_strName.size() + 1;
    return strOutcome.substr(iText, strOutcome.find(PartEnd, iText) - iText);
}

}  // namespace MFaultRecord
