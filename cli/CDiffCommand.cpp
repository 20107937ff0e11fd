#include "cli/CDiffCommand.h"

#include "cli/MArgumentKind.h"
#include "cli/MSettingJson.h"
#include "cli/MUtf8.h"
#include "jobs/MCompare.h"
#include "model/MSettingText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>

namespace {

using Json = nlohmann::ordered_json;
using MSettings::Row;

constexpr const char* Examples = R"(Examples:
  varden diff shop.dt1 defaults
  varden diff old.json new.json --json

The exit code is 4 when something differs, and 0 when everything that could be
compared is the same. What means the same is the same, however it is written.
A file that is called defaults is ./defaults here.)";

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

std::string Cell(const Row& p_objRow, const CLoadedSettings& p_objSide) {
    const CItemManager& objItems = p_objSide.m_objSnapshot.Items();
    const auto strValue = MSettingText::Show(p_objRow, objItems);
    return MUtf8::FromLatin1(
        strValue ? *strValue : "none of its values: " + MSettingText::Raw(p_objRow, objItems));
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
        objDifferent.Add({std::string(objRow->m_strName), Cell(*objRow, p_objResult.m_objA),
                          Cell(*objRow, p_objResult.m_objB)});
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

}  // namespace

void CDiffCommand::Describe(CLI::App& p_objTable) {
    p_objTable.add_option("A", m_strA, "The one side: a settings file, or \"defaults\".")
        ->required()
        ->type_name(MArgumentKind::Side);
    p_objTable.add_option("B", m_strB, "The other side, named in the same way.")
        ->required()
        ->type_name(MArgumentKind::Side);
    p_objTable.footer(Examples);
}

CLoadedSettings CDiffCommand::Load(const std::string& p_strName) const {
    const auto objFound =
        std::ranges::find_if(m_objSources, [&](const ISettingsSource* p_objSource) {
            return p_objSource->Knows(p_strName);
        });
    if (objFound == m_objSources.end()) {
        throw CCommandError(MExitCode::Wrong,
                            {"\"" + p_strName + "\" holds no settings", {}, p_strName, {}});
    }
    return (*objFound)->Load(p_strName);
}

MExitCode::Code CDiffCommand::Run(COutput& p_objOutput) {
    CLoadedSettings objA = Load(m_strA);
    const Comparison objResult = Compare(std::move(objA), Load(m_strB));
    FillJson(objResult, p_objOutput.Json());
    Show(objResult, p_objOutput);
    if (objResult.m_objDifferent.empty() && objResult.m_objSame.empty()) {
        throw CCommandError(
            MExitCode::Wrong,
            {"Nothing could be compared", "no setting is known on both sides", {}, {}});
    }
    return objResult.m_objDifferent.empty() ? MExitCode::Done : MExitCode::Different;
}
