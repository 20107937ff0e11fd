#include "cli/CListCommand.h"

#include "cli/MArgumentKind.h"
#include "cli/MSettingJson.h"
#include "cli/MSettingNames.h"
#include "cli/MUtf8.h"
#include "model/MSettingText.h"
#include "protocol/MAnswer.h"
#include "protocol/MSettingRoute.h"

#include <CLI/CLI.hpp>

#include <array>

namespace {

using Json = nlohmann::ordered_json;
using MSettings::Cuts;
using MSettings::Kind;
using MSettings::Row;

constexpr const char* Examples = R"(Examples:
  varden list
  varden list speed parity
  varden list --json

READ names the answer of the printer that reports a setting, WRITE tells whether
it can be set at all, and CUTS the link that changing it over that link can cut.)";

/// The answers' names, by MAnswer::Group.
constexpr std::array<const char*, 5> Groups{"adjustment", "parameter", "sensor", "lan",
                                            "expansion"};

Json ReadOf(const Row& p_objRow) {
    const std::int16_t iGroup = MSettingRoute::ReportedIn(p_objRow);
    return iGroup == MAnswer::NoGroup ? Json(nullptr)
                                      : Json(Groups.at(static_cast<std::size_t>(iGroup)));
}

bool IsWritable(const Row& p_objRow) {
    return MSettingRoute::CarriedBy(p_objRow) != MSettingRoute::Command::None;
}

Json CutsOf(const Row& p_objRow) {
    switch (p_objRow.m_iCuts) {
    case Cuts::Lan:
        return "lan";
    case Cuts::Serial:
        return "serial";
    case Cuts::Nothing:
        break;
    }
    return nullptr;
}

const char* KindOf(const Row& p_objRow) {
    switch (p_objRow.m_iKind) {
    case Kind::List:
        return "list";
    case Kind::Number:
        return p_objRow.m_objRange.m_bHexa ? "hexadecimal" : "number";
    case Kind::Address:
        return "address";
    case Kind::Text:
        break;
    }
    return "text";
}

/// A text for a cell; "-" for nothing.
std::string Cell(const Json& p_objValue) {
    if (p_objValue.is_null()) {
        return "-";
    }
    return p_objValue.is_string() ? p_objValue.get<std::string>() : p_objValue.dump();
}

/// By how much a number goes on; also of hexadecimal digits a number.
Json StepOf(const Row& p_objRow) {
    if (p_objRow.m_iKind != Kind::Number) {
        return nullptr;
    }
    const std::int32_t iStep = p_objRow.m_objRange.m_iStep;
    return p_objRow.m_objRange.m_bHexa ? Json(iStep) : MSettingJson::Number(p_objRow, iStep);
}

Json Describe(const Row& p_objRow) {
    const bool bNumber = p_objRow.m_iKind == Kind::Number;
    const auto Bound = [&](std::int32_t p_iBound) {
        return bNumber ? MSettingJson::Number(p_objRow, p_iBound) : Json(nullptr);
    };
    Json objValues = nullptr;
    if (p_objRow.m_iKind == Kind::List) {
        objValues = p_objRow.m_strEntries;
    }
    return {{"label", p_objRow.m_strLabel},
            {"kind", KindOf(p_objRow)},
            {"allowed", MSettingText::Allowed(p_objRow)},
            {"values", objValues},
            {"min", Bound(p_objRow.m_objRange.m_iMin)},
            {"max", Bound(p_objRow.m_objRange.m_iMax)},
            {"step", StepOf(p_objRow)},
            {"default", MSettingJson::Value(p_objRow, CItemManager(), true)},
            {"read", ReadOf(p_objRow)},
            {"writable", IsWritable(p_objRow)},
            {"cuts", CutsOf(p_objRow)}};
}

/// What it can be, and what it is at first.
std::string ValuesCell(const Row& p_objRow) {
    const auto strDefault = MSettingText::Show(p_objRow, CItemManager(), true);
    return MSettingText::Allowed(p_objRow) + "; default " +
           (strDefault && !strDefault->empty() ? MUtf8::FromLatin1(*strDefault) : "empty");
}

}  // namespace

void CListCommand::Describe(CLI::App& p_objTable) {
    p_objTable
        .add_option("SETTING", m_strSettings, "The settings to show; all of them unless given.")
        ->type_name(MArgumentKind::Setting);
    p_objTable.footer(Examples);
}

MExitCode::Code CListCommand::Run(COutput& p_objOutput) {
    CTable objTable({"NAME", "LABEL", "STEP", "READ", "WRITE", "CUTS", "VALUES"});
    const std::vector<const Row*> objChosen = MSettingNames::Rows(m_strSettings);
    Json& objSettings = p_objOutput.Json()["settings"] = Json::object();
    for (const Row* const objRow : objChosen) {
        const Json objRowJson = ::Describe(*objRow);
        objTable.Add({std::string(objRow->m_strName), std::string(objRow->m_strLabel),
                      Cell(objRowJson["step"]), Cell(objRowJson["read"]),
                      IsWritable(*objRow) ? "yes" : "no", Cell(objRowJson["cuts"]),
                      ValuesCell(*objRow)});
        objSettings[std::string(objRow->m_strName)] = objRowJson;
    }
    p_objOutput.Show(objTable);
    return MExitCode::Done;
}
