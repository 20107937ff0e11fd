#include "jobs/MWritePlan.h"

#include "model/MNumber.h"
#include "model/MSettingText.h"
#include "protocol/MAnswer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace {

using Command = CWritePlan::Command;
using Rows = CWritePlan::Rows;
using MSettings::Cuts;
using MSettings::Row;
using MWritePlan::Ends;

/// Where the printer is depends on the last ones, most of all on the very last.
constexpr std::array SendOrder{Command::Parameters, Command::Adjustments, Command::Gateway,
                               Command::SubnetMask, Command::SocketPort,  Command::IpAddress,
                               Command::Dhcp};

bool IsReported(const Row& p_objRow) {
    return MSettingRoute::ReportedIn(p_objRow) != MAnswer::NoGroup;
}

/// Takes the setting over as it is held. What fills a text up to its field's width is left to
/// the command, which fills it up itself.
void Take(const Row& p_objRow, const CSnapshot& p_objFrom, CSnapshot& p_objTo) {
    for (const MSettings::Slot objSlot : p_objRow.Items()) {
        CItem& objItem = *(p_objTo.Items().*objSlot);
        objItem.m_vValue = (p_objFrom.Items().*objSlot)->m_vValue;
        if (p_objRow.m_iKind == MSettings::Kind::Text &&
            MNumber::ToText(objItem.m_vDefaultValue).empty()) {
            const std::string strText = MNumber::ToText(objItem.m_vValue);
            const std::string_view strFill("\xFF \0", 3);
            objItem.m_vValue = strText.substr(0, strText.find_last_not_of(strFill) + 1);
        }
    }
    p_objTo.SetKnown(p_objRow);
}

/// What the plan has for a setting, before and after.
void TakeEnds(const Row& p_objRow, const Ends& p_objEnds, CWritePlan& p_objPlan) {
    const CSnapshot& objBefore =
        IsReported(p_objRow) ? p_objEnds.m_objRead : p_objEnds.m_objVouched;
    const bool bWanted = p_objEnds.m_objWanted.IsKnown(p_objRow);
    if (objBefore.IsKnown(p_objRow)) {
        Take(p_objRow, objBefore, p_objPlan.m_objBefore);
        Take(p_objRow, objBefore, p_objPlan.m_objAfter);
    }
    if (bWanted) {
        Take(p_objRow, p_objEnds.m_objWanted, p_objPlan.m_objAfter);
    }
    if (bWanted && !IsReported(p_objRow) && !objBefore.IsKnown(p_objRow)) {
        // Whatever it was: the command that undoes the change has to carry something. It does not
        // become known by that.
        const CSnapshot objAfter = p_objPlan.m_objAfter;
        for (const MSettings::Slot objSlot : p_objRow.Items()) {
            (p_objPlan.m_objBefore.Items().*objSlot)->m_vValue =
                (objAfter.Items().*objSlot)->m_vValue;
        }
    }
}

/// Whether what is wanted of a setting is another value than what is known of it.
bool Differs(const Row& p_objRow, const CSnapshot& p_objWanted, const CSnapshot& p_objKnown) {
    return p_objWanted.IsKnown(p_objRow) &&
           (!p_objKnown.IsKnown(p_objRow) ||
            !MSettingText::Same(p_objRow, p_objWanted.Items(), p_objKnown.Items()));
}

/// Whether a setting makes its command necessary. One that no answer reports does so only when
/// somebody says that it has another value: it cannot be known whether it has the wanted one.
bool IsChange(const Row& p_objRow, const Ends& p_objEnds) {
    if (IsReported(p_objRow)) {
        return Differs(p_objRow, p_objEnds.m_objWanted, p_objEnds.m_objRead);
    }
    return p_objEnds.m_objVouched.IsKnown(p_objRow) &&
           Differs(p_objRow, p_objEnds.m_objWanted, p_objEnds.m_objVouched);
}

bool IsLinkChange(const Row& p_objRow, const Ends& p_objEnds) {
    if (p_objRow.m_iCuts == Cuts::Nothing || p_objRow.m_iCuts != p_objEnds.m_iLink) {
        return false;
    }
    return Differs(p_objRow, p_objEnds.m_objWanted,
                   IsReported(p_objRow) ? p_objEnds.m_objRead : p_objEnds.m_objLinkStands);
}

std::string Shown(const char* p_strName, const CSnapshot& p_objSnapshot) {
    return MSettingText::Show(MSettings::Get(p_strName), p_objSnapshot.Items()).value_or("");
}

/// "9600,E,8,1"
std::string Line(const CSnapshot& p_objSnapshot) {
    const std::string strSpeed = Shown("speed", p_objSnapshot);
    return strSpeed.substr(0, strSpeed.find('b')) + "," +
           Shown("parity", p_objSnapshot).substr(0, 1) + "," +
           Shown("data-length", p_objSnapshot).substr(0, 1) + "," +
           Shown("stop-bit", p_objSnapshot).substr(0, 1);
}

/// Where the printer may be behind a step that cuts the link.
CPrinterPlace PlaceBehind(Command p_iCommand, const CWritePlan& p_objPlan, CPrinterPlace p_objPlace,
                          Cuts p_iLink) {
    const CSnapshot& objAfter = p_objPlan.m_objAfter;
    if (p_iLink == Cuts::Serial) {
        p_objPlace.m_strLine = Line(objAfter);
    } else if (p_iCommand == Command::IpAddress) {
        p_objPlace.m_strHost = Shown("ip-address", objAfter);
    } else if (p_iCommand == Command::SocketPort &&
               Shown("socket-port", objAfter) != Shown("socket-port", p_objPlan.m_objBefore)) {
        const std::string strPort = Shown("socket-port", objAfter);
        std::uint16_t iPort = 0;
        std::from_chars(strPort.data(), strPort.data() + strPort.size(), iPort);
        p_objPlace.m_iPort = iPort;
    }
    return p_objPlace;
}

Rows Filtered(const Rows& p_objRows, const auto& p_fnKeep) {
    Rows objKept;
    std::ranges::copy_if(p_objRows, std::back_inserter(objKept),
                         [&](const Row* p_objRow) { return p_fnKeep(*p_objRow); });
    return objKept;
}

}  // namespace

namespace MWritePlan {

Rows ToRead(const CSnapshot& p_objWanted) {
    CWritePlan objWhole;
    for (const Row& objRow : MSettings::All()) {
        if (p_objWanted.IsKnown(objRow)) {
            objWhole.m_objSteps.push_back({MSettingRoute::CarriedBy(objRow)});
        }
    }
    return objWhole.Reported();
}

CWritePlan Make(const Ends& p_objEnds) {
    CWritePlan objPlan;
    for (const Command iCommand : SendOrder) {
        const Rows objRows = CWritePlan::CarriedBy(iCommand);
        const bool bChange = std::ranges::any_of(
            objRows, [&](const Row* p_objRow) { return IsChange(*p_objRow, p_objEnds); });
        if (!bChange) {
            continue;
        }
        for (const Row* const objRow : objRows) {
            TakeEnds(*objRow, p_objEnds, objPlan);
        }
        const bool bCuts = std::ranges::any_of(
            objRows, [&](const Row* p_objRow) { return IsLinkChange(*p_objRow, p_objEnds); });
        objPlan.m_objSteps.push_back({iCommand, bCuts});
    }
    std::stable_partition(objPlan.m_objSteps.begin(), objPlan.m_objSteps.end(),
                          [](const CWritePlan::Step& p_objStep) { return !p_objStep.m_bCuts; });
    CPrinterPlace objPlace;
    for (CWritePlan::Step& objStep : objPlan.m_objSteps) {
        if (objStep.m_bCuts) {
            objPlace = PlaceBehind(objStep.m_iCommand, objPlan, objPlace, p_objEnds.m_iLink);
        }
        objStep.m_objPlace = objPlace;
    }
    return objPlan;
}

Rows Lasting() {
    Rows objRows;
    for (const Row& objRow : MSettings::All()) {
        if (IsReported(objRow) && MSettingRoute::ReportedIn(objRow) != MAnswer::Sensor) {
            objRows.push_back(&objRow);
        }
    }
    return objRows;
}

void TakeOthers(const CSnapshot& p_objRead, CWritePlan& p_objPlan) {
    const Rows objCarried = p_objPlan.Carried();
    for (const Row& objRow : MSettings::All()) {
        if (p_objRead.IsKnown(objRow) &&
            std::ranges::find(objCarried, &objRow) == objCarried.end()) {
            Take(objRow, p_objRead, p_objPlan.m_objBefore);
            Take(objRow, p_objRead, p_objPlan.m_objAfter);
        }
    }
}

Rows Missing(const CWritePlan& p_objPlan) {
    return Filtered(p_objPlan.Unreported(),
                    [&](const Row& p_objRow) { return !p_objPlan.m_objAfter.IsKnown(p_objRow); });
}

Rows LinkChanges(const CWritePlan& p_objPlan, const Ends& p_objEnds) {
    return Filtered(p_objPlan.Carried(),
                    [&](const Row& p_objRow) { return IsLinkChange(p_objRow, p_objEnds); });
}

bool HoldSameFields(const Row& p_objRow, const CSnapshot& p_objOne, const CSnapshot& p_objOther) {
    const auto fnAreSame = [&](const CSnapshot& p_objA, const CSnapshot& p_objB) {
        return std::ranges::all_of(p_objRow.Items(), [&](MSettings::Slot p_objSlot) {
            return (p_objA.Items().*p_objSlot)->GetValueString() ==
                   (p_objB.Items().*p_objSlot)->GetValueString();
        });
    };
    if (fnAreSame(p_objOne, p_objOther)) {
        return true;  // nearly always, and without two catalogues for each setting
    }
    CSnapshot objOne;
    CSnapshot objOther;
    Take(p_objRow, p_objOne, objOne);
    Take(p_objRow, p_objOther, objOther);
    return fnAreSame(objOne, objOther);
}

Rows Unreadable(const CWritePlan& p_objPlan) {
    return Filtered(p_objPlan.Reported(),
                    [&](const Row& p_objRow) { return !p_objPlan.m_objBefore.IsKnown(p_objRow); });
}

}  // namespace MWritePlan
