#include "jobs/CWritePlan.h"

#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <algorithm>
#include <string_view>

namespace {

using Rows = CWritePlan::Rows;

bool IsReported(const MSettings::Row& p_objRow) {
    return MSettingRoute::ReportedIn(p_objRow) != MAnswer::NoGroup;
}

/// Whether a setting is reported, and stays what it is until somebody changes it.
bool IsLasting(const MSettings::Row& p_objRow) {
    return IsReported(p_objRow) && MSettingRoute::ReportedIn(p_objRow) != MAnswer::Sensor;
}

/// No byte of a field may look like the end of the command or the beginning of another.
bool IsOneCommand(std::string_view p_strText) {
    constexpr std::string_view Frame = "{|}";
    return p_strText.size() > Frame.size() && p_strText.front() == '{' &&
           p_strText.find_first_of(Frame, 1) == p_strText.size() - 2 &&
           p_strText.ends_with(MCommand::CommandEnd);
}

}  // namespace

Rows CWritePlan::CarriedBy(Command p_iCommand) {
    Rows objRows;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (MSettingRoute::CarriedBy(objRow) == p_iCommand) {
            objRows.push_back(&objRow);
        }
    }
    return objRows;
}

Rows CWritePlan::Carried() const {
    Rows objRows;
    for (const MSettings::Row& objRow : MSettings::All()) {
        const Command iCommand = MSettingRoute::CarriedBy(objRow);
        if (std::ranges::find(m_objSteps, iCommand, &Step::m_iCommand) != m_objSteps.end()) {
            objRows.push_back(&objRow);
        }
    }
    return objRows;
}

Rows CWritePlan::Reported() const {
    Rows objRows = Carried();
    std::erase_if(objRows, [](const MSettings::Row* p_objRow) { return !IsReported(*p_objRow); });
    return objRows;
}

Rows CWritePlan::Unreported() const {
    Rows objRows = Carried();
    std::erase_if(objRows, [](const MSettings::Row* p_objRow) { return IsReported(*p_objRow); });
    return objRows;
}

Rows CWritePlan::Others() const {
    const Rows objCarried = Carried();
    Rows objRows;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (IsLasting(objRow) && m_objBefore.IsKnown(objRow) &&
            std::ranges::find(objCarried, &objRow) == objCarried.end()) {
            objRows.push_back(&objRow);
        }
    }
    return objRows;
}

std::string CWritePlan::Text(Command p_iCommand, const CSnapshot& p_objSnapshot) {
    const CItemManager& objItems = p_objSnapshot.Items();
    if (!MCommand::IsSetExact(objItems) || !MCommand::IsLanSetExact(objItems)) {
        return {};
    }
    std::string strText = MSettingRoute::Text(p_iCommand, objItems);
    return IsOneCommand(strText) ? strText : std::string();
}

std::vector<CPrinterPlace> CWritePlan::Places(std::size_t p_iDone) const {
    std::vector<CPrinterPlace> objPlaces;
    for (std::size_t i = std::min(p_iDone, m_objSteps.size()); i > 0; --i) {
        const CPrinterPlace& objPlace = m_objSteps[i - 1].m_objPlace;
        if (std::ranges::find(objPlaces, objPlace) == objPlaces.end()) {
            objPlaces.push_back(objPlace);
        }
    }
    if (std::ranges::find(objPlaces, CPrinterPlace{}) == objPlaces.end()) {
        objPlaces.emplace_back();
    }
    return objPlaces;
}
