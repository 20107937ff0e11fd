#include "cli/MJournalJson.h"

#include "cli/MSettingJson.h"
#include "cli/MUtf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using Json = nlohmann::ordered_json;
using Step = CWritePlan::Step;

/// Every item in the form in which it is sent, and which settings that makes known.
Json Held(const CSnapshot& p_objSnapshot) {
    Json objItems = Json::object();
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        const CItem& objItem = *(p_objSnapshot.Items().*objRow.m_objSlot);
        objItems[std::string(objRow.m_strName)] = MUtf8::FromLatin1(objItem.GetValueString());
    }
    Json objKnown = Json::array();
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (p_objSnapshot.IsKnown(objRow)) {
            objKnown.push_back(objRow.m_strName);
        }
    }
    return {{"settings", MSettingJson::Values(p_objSnapshot)},
            {"known", objKnown},
            {"fields", objItems}};
}

CSnapshot ReadHeld(const Json& p_objJson) {
    CSnapshot objSnapshot;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        const auto strField =
            p_objJson.at("fields").at(std::string(objRow.m_strName)).get<std::string>();
        (objSnapshot.Items().*objRow.m_objSlot)->SetValue(MUtf8::ToLatin1(strField).value());
    }
    for (const Json& objName : p_objJson.at("known")) {
        objSnapshot.SetKnown(MSettings::Get(objName.get<std::string>()));
    }
    return objSnapshot;
}

Json StepJson(const Step& p_objStep) {
    const CPrinterPlace& objPlace = p_objStep.m_objPlace;
    return {{"command", MSettingRoute::Head(p_objStep.m_iCommand)},
            {"cuts", p_objStep.m_bCuts},
            {"host", objPlace.m_strHost},
            {"port", objPlace.m_iPort.value_or(0)},
            {"line", objPlace.m_strLine}};
}

Step ReadStep(const Json& p_objJson) {
    const auto& iCommands = MSettingRoute::Commands();
    const auto strHead = p_objJson.at("command").get<std::string>();
    const auto objFound = std::ranges::find_if(iCommands, [&](MSettingRoute::Command p_iCommand) {
        return MSettingRoute::Head(p_iCommand) == strHead;
    });
    if (objFound == iCommands.end()) {
        throw std::invalid_argument("no command: " + strHead);
    }
    Step objStep{*objFound, p_objJson.at("cuts").get<bool>()};
    objStep.m_objPlace.m_strHost = p_objJson.at("host").get<std::string>();
    objStep.m_objPlace.m_strLine = p_objJson.at("line").get<std::string>();
    if (const auto iPort = p_objJson.at("port").get<std::uint16_t>(); iPort != 0) {
        objStep.m_objPlace.m_iPort = iPort;
    }
    return objStep;
}

}  // namespace

namespace MJournalJson {

std::string Text(const CJournalRecord& p_objRecord) {
    Json objSteps = Json::array();
    for (const Step& objStep : p_objRecord.m_objPlan.m_objSteps) {
        objSteps.push_back(StepJson(objStep));
    }
    const Json objJson{{"varden-journal", Format},
                       {"target", p_objRecord.m_strTarget},
                       {"started", p_objRecord.m_strStarted},
                       {"steps", objSteps},
                       {"before", Held(p_objRecord.m_objPlan.m_objBefore)},
                       {"after", Held(p_objRecord.m_objPlan.m_objAfter)}};
    constexpr int iIndent = 2;
    return objJson.dump(iIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::optional<CJournalRecord> Read(std::string_view p_strBytes) {
    try {
        const Json objJson = Json::parse(p_strBytes);
        if (objJson.at("varden-journal") != Format) {
            return std::nullopt;
        }
        CJournalRecord objRecord;
        objRecord.m_strTarget = objJson.at("target").get<std::string>();
        objRecord.m_strStarted = objJson.at("started").get<std::string>();
        for (const Json& objStep : objJson.at("steps")) {
            objRecord.m_objPlan.m_objSteps.push_back(ReadStep(objStep));
        }
        objRecord.m_objPlan.m_objBefore = ReadHeld(objJson.at("before"));
        objRecord.m_objPlan.m_objAfter = ReadHeld(objJson.at("after"));
        return objRecord;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace MJournalJson
