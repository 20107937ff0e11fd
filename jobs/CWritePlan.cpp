#include "jobs/CWritePlan.h"

#include "jobs/MWritePlan.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

using Rows = CWritePlan::Rows;

bool IsReported(const MSettings::Row& p_objRow) {
    return MSettingRoute::ReportedIn(p_objRow) != MAnswer::NoGroup;
}

/// No byte of a field may look like the end of the command or the beginning of another: the first
/// such byte behind its head is its end's.
bool IsOneCommand(std::string_view p_strText) {
    const std::size_t iEnd = p_strText.find_first_of("{|}", 1);
    return iEnd != std::string_view::npos && p_strText.substr(iEnd) == MCommand::CommandEnd;
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
    std::ranges::copy_if(MWritePlan::Lasting(), std::back_inserter(objRows),
                         [&](const MSettings::Row* p_objRow) {
                             return m_objBefore.IsKnown(*p_objRow) &&
                                    std::ranges::find(objCarried, p_objRow) == objCarried.end();
                         });
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
    const auto fnAdd = [&](const CPrinterPlace& p_objPlace) {
        if (std::ranges::find(objPlaces, p_objPlace) == objPlaces.end()) {
            objPlaces.push_back(p_objPlace);
        }
    };
    for (std::size_t i = std::min(p_iDone, m_objSteps.size()); i > 0; --i) {
        fnAdd(m_objSteps[i - 1].m_objPlace);
    }
    fnAdd({});
    fnAdd(m_objHome);
    // A printer may have taken its new address and not its new port, or the other way round.
    for (const CPrinterPlace& objOne : std::vector(objPlaces)) {
        for (const CPrinterPlace& objOther : std::vector(objPlaces)) {
            fnAdd({objOne.m_strHost, objOther.m_iPort, objOne.m_strLine});
        }
    }
    return objPlaces;
}
