#include "tests/cli/faults/MFaultText.h"

#include "cli/MExitCode.h"
#include "model/MSettings.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace {

using Json = nlohmann::ordered_json;
using MFaultCells::Cell;
using MFaultRows::Row;

Json Parsed(const CFaultOutcome& p_objOutcome) {
    return Json::parse(p_objOutcome.m_strOut, nullptr, false);
}

std::string Replaced(std::string p_strText, const std::string& p_strOld,
                     const std::string& p_strNew) {
    for (std::size_t i = p_strText.find(p_strOld); i != std::string::npos;
         i = p_strText.find(p_strOld, i + p_strNew.size())) {
        p_strText.replace(i, p_strOld.size(), p_strNew);
    }
    return p_strText;
}

std::string Seconds(double p_dSeconds) {
    constexpr double Tenths = 10;
    const auto iTenths = std::lround(p_dSeconds * Tenths);
    return std::to_string(iTenths / 10) + "." + std::to_string(iTenths % 10) + " s";
}

/// "{Z5;0 {WS", each as far as it tells what it is.
std::string Heads(const std::vector<std::string>& p_strCommands) {
    std::string strHeads;
    for (const std::string& strCommand : p_strCommands) {
        const std::size_t iEnd = std::min(strCommand.find_first_of(",|"), strCommand.size());
        strHeads += (strHeads.empty() ? "" : " ") + strCommand.substr(1, iEnd - 1);
    }
    return strHeads.empty() ? "nothing" : strHeads;
}

std::string Text(const Json& p_objJson) {
    return p_objJson.is_string() ? p_objJson.get<std::string>() : p_objJson.dump();
}

/// Of a reading: how many settings are known, and why the others are not.
std::string Settings(const Json& p_objJson) {
    std::map<std::string, int> iCounts;
    for (const auto& objSetting : p_objJson["settings"]) {
        ++iCounts[objSetting["why"].is_null() ? "known" : objSetting["why"].get<std::string>()];
    }
    std::string strText = p_objJson["complete"] == true ? "complete" : "not complete";
    for (const auto& [strWhy, iCount] : iCounts) {
        strText += ", " + std::to_string(iCount) + " " + strWhy;
    }
    return strText;
}

/// What the object says besides its error, of the commands that have such a thing.
std::string Facts(const Json& p_objJson) {
    std::string strText;
    if (p_objJson.contains("settings")) {
        strText += "  " + Settings(p_objJson) + "\n";
    }
    if (p_objJson.contains("code")) {
        strText += "  code " + Text(p_objJson["code"]) + ", text " + Text(p_objJson["text"]) +
                   ", known " + Text(p_objJson["known"]) + "\n";
    }
    if (p_objJson.contains("sent")) {
        strText += "  sent " + Text(p_objJson["sent"]) + "\n";
    }
    if (p_objJson.contains("different")) {
        strText += "  " + std::to_string(p_objJson["different"].size()) + " different, " +
                   std::to_string(p_objJson["same"].size()) + " same, " +
                   std::to_string(p_objJson["unknown"].size()) + " unknown\n";
    }
    if (p_objJson.contains("end")) {
        strText += "  end " + Text(p_objJson["end"]) + ", changed " + Text(p_objJson["changed"]) +
                   ", results";
        for (const auto& objResult : p_objJson["results"].items()) {
            strText += " " + objResult.key() + "=" + Text(objResult.value());
        }
        strText += "\n";
    }
    if (p_objJson.contains("moved_to") && !p_objJson["moved_to"].is_null()) {
        strText += "  moved to " + Text(p_objJson["moved_to"]) + "\n";
    }
    return strText;
}

/// How the printer stands: of a change, and of what is left of one.
std::string Standing(const Row& p_objRow, const CFaultOutcome& p_objOutcome) {
    std::map<std::string, std::string> strWanted = p_objOutcome.m_strBefore;
    for (const auto& [strName, strValue] : p_objRow.Wanted()) {
        strWanted[strName] = strValue;
    }
    const auto IsWanted = [&](const std::string& p_strName) {
        const std::string& strHas = p_objOutcome.m_strAfter.at(p_strName);
        const std::string& strIs = strWanted.at(p_strName);
        return strHas == strIs || strHas == strIs + ".0";
    };
    const bool bWanted = std::ranges::all_of(
        strWanted, [&](const auto& p_objEntry) { return IsWanted(p_objEntry.first); });
    std::string strText = bWanted ? "as wanted" : "";
    if (p_objOutcome.m_strAfter == p_objOutcome.m_strBefore) {
        strText += strText.empty() ? "as before" : ", and was before";
    }
    return strText.empty() ? "neither as before nor as wanted" : strText;
}

}  // namespace

namespace MFaultText {

std::string Brief(const Cell& p_objCell, const CFaultOutcome& p_objOutcome) {
    const Json objJson = Parsed(p_objOutcome);
    std::string strText = std::to_string(p_objOutcome.m_iCode);
    if (objJson.contains("error")) {
        const std::string strTarget = MFaultRows::Target(p_objCell.m_iLink);
        const std::string strWhat = objJson["error"]["what"];
        strText += " " + Replaced(strWhat, strTarget, "TARGET");
    } else if (objJson.contains("code")) {
        strText += " status " + Text(objJson["code"]);
    } else if (objJson.contains("end")) {
        strText += " " + Text(objJson["end"]);
    }
    return strText + ", " + std::to_string(p_objOutcome.m_strCommands.size()) + " sent" +
           (p_objOutcome.m_bJournal ? ", journal" : "");
}

std::string Whole(const Cell& p_objCell, const MFaultCells::Played& p_objPlayed) {
    const CFaultOutcome& objOutcome = p_objPlayed.m_objOutcome;
    const Json objJson = Parsed(objOutcome);
    std::string strText = Brief(p_objCell, objOutcome) + "\n";
    if (objJson.contains("error")) {
        for (const char* const strKey : {"cause", "hint"}) {
            if (!objJson["error"][strKey].is_null()) {
                strText += "  " + std::string(strKey) + ": " +
                           Replaced(objJson["error"][strKey], MFaultRows::Target(p_objCell.m_iLink),
                                    "TARGET") +
                           "\n";
            }
        }
    }
    strText += "  asked " + Heads(objOutcome.m_strCommands) + "\n" + Facts(objJson);
    for (const auto& [strName, strBytes] : objOutcome.m_strFiles) {
        strText += "  wrote " + strName + "\n";
    }
    if (p_objCell.m_objRow->m_iChanges == Row::Changes::Settings ||
        p_objCell.m_objRow->m_iChanges == Row::Changes::Journal) {
        strText += "  the printer is " + Standing(*p_objCell.m_objRow, objOutcome) + "\n";
    }
    if (p_objPlayed.m_iRecovered != CFaultOutcome::NoCode) {
        strText += "  recovered with " + std::to_string(p_objPlayed.m_iRecovered) + "\n";
    }
    return strText + "  after " + Seconds(objOutcome.m_dSeconds) + "\n";
}

std::string File(const Row& p_objRow) {
    std::string strText = p_objRow.CommandLine() + "\n";
    for (const MFaults::Link iLink : p_objRow.m_iLinks) {
        for (const Cell& objCell : MFaultCells::Of(p_objRow, iLink)) {
            strText +=
                "\n[" + objCell.Heading() + "]\n" + Whole(objCell, MFaultCells::Play(objCell));
        }
    }
    return strText;
}

}  // namespace MFaultText
