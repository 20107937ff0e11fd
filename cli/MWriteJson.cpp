#include "cli/MWriteJson.h"

#include "cli/MSettingCell.h"
#include "cli/MSettingJson.h"
#include "cli/MWriteText.h"
#include "model/MSettingText.h"

namespace {

using End = CWriteReport::End;
using Json = nlohmann::ordered_json;
using MSettings::Row;

/// What was read last, or what would be.
const CSnapshot& Afterwards(const CWriteReport& p_objReport) {
    return p_objReport.m_iEnd == End::WouldChange ? p_objReport.m_objPlan.m_objAfter
                                                  : p_objReport.m_objFinally;
}

Json Values(const CWriteReport& p_objReport, const CSnapshot& p_objSnapshot) {
    Json objValues = Json::object();
    for (const Row& objRow : MSettings::All()) {
        if (p_objReport.m_objResults.contains(std::string(objRow.m_strName))) {
            objValues[std::string(objRow.m_strName)] =
                p_objSnapshot.IsKnown(objRow) ? MSettingJson::Value(objRow, p_objSnapshot.Items())
                                              : Json(nullptr);
        }
    }
    return objValues;
}

Json StepJson(const CWritePlan& p_objPlan, const CWritePlan::Step& p_objStep) {
    Json objSettings = Json::object();
    for (const Row* const objRow : CWritePlan::CarriedBy(p_objStep.m_iCommand)) {
        const bool bKnown = p_objPlan.m_objBefore.IsKnown(*objRow);
        if (!bKnown || !MSettingText::Same(*objRow, p_objPlan.m_objBefore.Items(),
                                           p_objPlan.m_objAfter.Items())) {
            objSettings[std::string(objRow->m_strName)] = {
                {"from", bKnown ? MSettingJson::Value(*objRow, p_objPlan.m_objBefore.Items())
                                : Json(nullptr)},
                {"to", MSettingJson::Value(*objRow, p_objPlan.m_objAfter.Items())}};
        }
    }
    return {{"command", MSettingRoute::Head(p_objStep.m_iCommand)},
            {"cuts", p_objStep.m_bCuts},
            {"settings", objSettings}};
}

std::string Cell(const Row& p_objRow, const CSnapshot& p_objSnapshot) {
    return p_objSnapshot.IsKnown(p_objRow) ? MSettingCell::Text(p_objRow, p_objSnapshot.Items())
                                           : "not known";
}

const char* Prospect(const Row& p_objRow, const CWriteReport& p_objReport) {
    const CWritePlan& objPlan = p_objReport.m_objPlan;
    return MSettingText::Same(p_objRow, objPlan.m_objBefore.Items(), objPlan.m_objAfter.Items())
               ? "same"
               : "to be changed";
}

}  // namespace

namespace MWriteJson {

void Fill(const CWriteReport& p_objReport, Json& p_objJson) {
    p_objJson["changed"] = p_objReport.m_iEnd == End::Changed;
    p_objJson["end"] = MWriteText::Word(p_objReport.m_iEnd);
    p_objJson["before"] = Values(p_objReport, p_objReport.m_objBefore);
    p_objJson["after"] = Values(p_objReport, Afterwards(p_objReport));
    Json& objPlan = p_objJson["plan"] = Json::array();
    for (const CWritePlan::Step& objStep : p_objReport.m_objPlan.m_objSteps) {
        objPlan.push_back(StepJson(p_objReport.m_objPlan, objStep));
    }
    Json& objResults = p_objJson["results"] = Json::object();
    for (const Row& objRow : MSettings::All()) {
        const auto objFound = p_objReport.m_objResults.find(objRow.m_strName);
        if (objFound != p_objReport.m_objResults.end()) {
            objResults[objFound->first] = MWriteText::Word(objFound->second);
        }
    }
}

CTable Table(const CWriteReport& p_objReport) {
    const bool bWould = p_objReport.m_iEnd == End::WouldChange;
    CTable objTable({"NAME", "BEFORE", bWould ? "WOULD BE" : "AFTER", "RESULT"});
    for (const Row& objRow : MSettings::All()) {
        const auto objFound = p_objReport.m_objResults.find(objRow.m_strName);
        if (objFound != p_objReport.m_objResults.end()) {
            objTable.Add(
                {objFound->first, Cell(objRow, p_objReport.m_objBefore),
                 Cell(objRow, Afterwards(p_objReport)),
                 bWould ? Prospect(objRow, p_objReport) : MWriteText::Word(objFound->second)});
        }
    }
    return objTable;
}

}  // namespace MWriteJson
