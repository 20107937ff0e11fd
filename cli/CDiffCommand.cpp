#include "cli/CDiffCommand.h"

#include "cli/MArgumentKind.h"
#include "cli/MFailureText.h"
#include "cli/MSettingCell.h"
#include "cli/MSettingJson.h"
#include "jobs/MCompare.h"
#include "model/MSettingText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;
using MSettings::Row;

constexpr const char* Examples = R"(Examples:
  varden diff shop.dt1 defaults
  varden diff lan:192.168.10.20 shop.json
  varden diff old.json new.json --json

The exit code is 4 when something differs, and 0 when everything that could be
compared is the same. It is 1 when a printer tells no value of something that
the other side holds. What means the same is the same, however it is written.
A file that is called like a printer, or defaults, is ./defaults here.)";

/// What comparing the two sides has brought, and the sides themselves.
struct Comparison : MCompare::Result {
    CLoadedSettings m_objA;
    CLoadedSettings m_objB;
};

Comparison Compare(CLoadedSettings p_objA, CLoadedSettings p_objB) {
    MCompare::Result objResult = MCompare::Compare(p_objA.m_objSnapshot, p_objB.m_objSnapshot);
    return {std::move(objResult), std::move(p_objA), std::move(p_objB)};
}

Json SideJson(const Row& p_objRow, const CLoadedSettings& p_objSide) {
    return {{"value", MSettingJson::Value(p_objRow, p_objSide.m_objSnapshot.Items())},
            {"raw", MSettingJson::Raw(p_objRow, p_objSide.m_objSnapshot.Items())}};
}

Json WhyJson(const Row& p_objRow, const CLoadedSettings& p_objSide) {
    const std::string strWhy = p_objSide.WhyUnknown(p_objRow);
    return strWhy.empty() ? Json(nullptr) : Json(strWhy);
}

void FillJson(const Comparison& p_objResult, Json& p_objJson) {
    p_objJson["a"] = p_objResult.m_objA.m_strSource;
    p_objJson["b"] = p_objResult.m_objB.m_strSource;
    Json& objDifferent = p_objJson["different"] = Json::object();
    for (const Row* const objRow : p_objResult.m_objDifferent) {
        objDifferent[std::string(objRow->m_strName)] = {
            {"a", SideJson(*objRow, p_objResult.m_objA)},
            {"b", SideJson(*objRow, p_objResult.m_objB)}};
    }
    Json& objSame = p_objJson["same"] = Json::array();
    for (const Row* const objRow : p_objResult.m_objSame) {
        objSame.push_back(objRow->m_strName);
    }
    Json& objUnknown = p_objJson["unknown"] = Json::object();
    for (const Row* const objRow : p_objResult.m_objUnknown) {
        objUnknown[std::string(objRow->m_strName)] = {{"a", WhyJson(*objRow, p_objResult.m_objA)},
                                                      {"b", WhyJson(*objRow, p_objResult.m_objB)}};
    }
}

/// Why a side does not know a setting, in front of what is to follow.
std::string Why(const Row& p_objRow, const CLoadedSettings& p_objSide, std::string p_strNext) {
    std::string strWhy = p_objSide.WhyUnknown(p_objRow);
    if (strWhy.empty()) {
        return p_strNext;
    }
    strWhy.insert(0, p_objSide.m_strSource + ": ");
    return p_strNext.empty() ? strWhy : strWhy.append("; ").append(p_strNext);
}

void Show(const Comparison& p_objResult, COutput& p_objOutput) {
    CTable objDifferent(
        {"DIFFERENT", p_objResult.m_objA.m_strSource, p_objResult.m_objB.m_strSource});
    for (const Row* const objRow : p_objResult.m_objDifferent) {
        objDifferent.Add({std::string(objRow->m_strName),
                          MSettingCell::Text(*objRow, p_objResult.m_objA.m_objSnapshot.Items()),
                          MSettingCell::Text(*objRow, p_objResult.m_objB.m_objSnapshot.Items())});
    }
    CTable objUnknown({"NOT COMPARED", "WHY"});
    for (const Row* const objRow : p_objResult.m_objUnknown) {
        objUnknown.Add({std::string(objRow->m_strName),
                        Why(*objRow, p_objResult.m_objA, Why(*objRow, p_objResult.m_objB, {}))});
    }
    for (const CTable* const objTable : {&objDifferent, &objUnknown}) {
        if (!objTable->IsEmpty()) {
            p_objOutput.Show(*objTable);
        }
    }
    p_objOutput.Say(std::to_string(p_objResult.m_objDifferent.size()) + " different, " +
                    std::to_string(p_objResult.m_objSame.size()) + " the same, " +
                    std::to_string(p_objResult.m_objUnknown.size()) + " not compared");
}

/// What a printer should have told, and what the other side holds, has to be compared.
void CheckRead(const CLoadedSettings& p_objSide, const CLoadedSettings& p_objOther) {
    std::vector<std::string> strNames;
    for (const Row& objRow : MSettings::All()) {
        const bool bMeant = p_objOther.m_objSnapshot.IsKnown(objRow) ||
                            p_objOther.m_strUnreadable.contains(objRow.m_strName);
        if (bMeant && p_objSide.m_strUnreadable.contains(objRow.m_strName)) {
            strNames.emplace_back(objRow.m_strName);
        }
    }
    if (!strNames.empty()) {
        throw MFailureText::OfUnreadable(strNames, p_objSide.m_strSource);
    }
}

/// The other side. A code that tells that nothing was sent would be wrong of both when the one side
/// is a printer.
CLoadedSettings FetchAfter(const CLoadedSettings& p_objOne,
                           const ISettingsSource::Fetch& p_fnNext) {
    try {
        return p_fnNext();
    } catch (const CCommandError& objError) {
        if (p_objOne.m_bSent) {
            throw CCommandError(MExitCode::Failed, objError.Words());
        }
        throw;
    }
}

}  // namespace

void CDiffCommand::Describe(CLI::App& p_objTable) {
    p_objTable
        .add_option("A", m_strA, "The one side: a printer, a settings file, or \"defaults\".")
        ->required()
        ->type_name(MArgumentKind::Side);
    p_objTable.add_option("B", m_strB, "The other side, named in the same way.")
        ->required()
        ->type_name(MArgumentKind::Side);
    p_objTable.footer(Examples);
}

ISettingsSource::Fetch CDiffCommand::Open(const std::string& p_strName,
                                          COutput& p_objOutput) const {
    const auto objFound =
        std::ranges::find_if(m_objSources, [&](const ISettingsSource* p_objSource) {
            return p_objSource->Knows(p_strName);
        });
    if (objFound == m_objSources.end()) {
        throw CCommandError(MExitCode::Wrong,
                            {"\"" + p_strName + "\" holds no settings", {}, p_strName, {}});
    }
    return (*objFound)->Open(p_strName, p_objOutput);
}

MExitCode::Code CDiffCommand::Run(COutput& p_objOutput) {
    // What is wrong on either side is found before a printer is sent anything.
    const ISettingsSource::Fetch fnA = Open(m_strA, p_objOutput);
    const ISettingsSource::Fetch fnB = Open(m_strB, p_objOutput);
    CLoadedSettings objA = fnA();
    CLoadedSettings objB = FetchAfter(objA, fnB);
    const Comparison objResult = Compare(std::move(objA), std::move(objB));
    FillJson(objResult, p_objOutput.Json());
    Show(objResult, p_objOutput);
    CheckRead(objResult.m_objA, objResult.m_objB);
    CheckRead(objResult.m_objB, objResult.m_objA);
    if (objResult.m_objDifferent.empty() && objResult.m_objSame.empty()) {
        const bool bSent = objResult.m_objA.m_bSent || objResult.m_objB.m_bSent;
        throw CCommandError(
            bSent ? MExitCode::Failed : MExitCode::Wrong,
            {"Nothing could be compared", "no setting is known on both sides", {}, {}});
    }
    return objResult.m_objDifferent.empty() ? MExitCode::Done : MExitCode::Different;
}
