#include "protocol/MSettingRoute.h"

#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

namespace {

using MSettingRoute::Command;

constexpr std::array Groups{MAnswer::Adjustment, MAnswer::Parameter, MAnswer::Sensor, MAnswer::Lan,
                            MAnswer::ParameterExpansion};

const std::vector<Command> SendOrder{Command::Parameters, Command::Adjustments, Command::IpAddress,
                                     Command::Gateway,    Command::SubnetMask,  Command::SocketPort,
                                     Command::Dhcp};

ItemArray ItemsOf(Command p_iCommand, const CItemManager& p_objItems) {
    ItemArray objItemAry;
    switch (p_iCommand) {
    case Command::Parameters:
        p_objItems.SetItem_Parameter(objItemAry);
        break;
    case Command::Adjustments:
        p_objItems.SetItem_Adjustment(objItemAry);
        break;
    case Command::IpAddress:
        p_objItems.SetItem_ExtraIpAddress(objItemAry);
        break;
    case Command::Gateway:
        p_objItems.SetItem_ExtraGateway(objItemAry);
        break;
    case Command::SubnetMask:
        p_objItems.SetItem_ExtraSubnet(objItemAry);
        break;
    case Command::SocketPort:
        return {p_objItems.m_objSocketPortSetting, p_objItems.m_objSocketPortNumber};
    case Command::Dhcp:
        return {p_objItems.m_objDhcpSetting, p_objItems.m_objDhcpClientId,
                p_objItems.m_objDhcpClientHost};
    case Command::None:  // not reached: only the commands of SendOrder are asked for
        break;           // not reached: likewise
    }
    return objItemAry;
}

bool Holds(const ItemArray& p_objItemAry, const ItemRef& p_objItem) {
    return std::ranges::find(p_objItemAry, p_objItem) != p_objItemAry.end();
}

std::int16_t FindGroup(const MSettings::Row& p_objRow, const CItemManager& p_objItems) {
    const auto* const objFound = std::ranges::find_if(Groups, [&](MAnswer::Group p_iGroup) {
        ItemArray objItemAry;
        MAnswer::GroupItems(p_objItems, p_iGroup, objItemAry);
        return Holds(objItemAry, p_objItems.*p_objRow.m_objSlots.front());
    });
    return objFound == Groups.end() ? MAnswer::NoGroup : *objFound;
}

Command FindCommand(const MSettings::Row& p_objRow, const CItemManager& p_objItems) {
    const auto objFound = std::ranges::find_if(SendOrder, [&](Command p_iCommand) {
        return Holds(ItemsOf(p_iCommand, p_objItems), p_objItems.*p_objRow.m_objSlots.front());
    });
    return objFound == SendOrder.end() ? Command::None : *objFound;
}

/// What follows from the groups once and for all, by the settings' names.
struct Routes {
    struct Route {
        std::int16_t m_iGroup;
        Command m_iCommand;
    };

    Routes() {
        const CItemManager objItems;
        for (const MSettings::Row& objRow : MSettings::All()) {
            m_objByName.emplace(objRow.m_strName,
                                Route{FindGroup(objRow, objItems), FindCommand(objRow, objItems)});
        }
    }

    static const Route& Of(const MSettings::Row& p_objRow) {
        static const Routes Known;
        return Known.m_objByName.at(p_objRow.m_strName);
    }

    std::map<std::string_view, Route> m_objByName;
};

}  // namespace

namespace MSettingRoute {

std::int16_t ReportedIn(const MSettings::Row& p_objRow) {
    return Routes::Of(p_objRow).m_iGroup;
}

Command CarriedBy(const MSettings::Row& p_objRow) {
    return Routes::Of(p_objRow).m_iCommand;
}

std::string Head(Command p_iCommand) {
    switch (p_iCommand) {
    case Command::Parameters:
        return MCommand::WriteGroupHead + std::to_string(MCommand::SetParameter) + ",";
    case Command::Adjustments:
        return MCommand::WriteGroupHead + std::to_string(MCommand::SetAdjustment) + ",";
    case Command::IpAddress:
        return MCommand::AddressHead + std::to_string(MCommand::IpAddress) + ",";
    case Command::Gateway:
        return MCommand::AddressHead + std::to_string(MCommand::Gateway) + ",";
    case Command::SubnetMask:
        return MCommand::AddressHead + std::to_string(MCommand::SubnetMask) + ",";
    case Command::SocketPort:
        return MCommand::PairHead;
    case Command::Dhcp:
        return MCommand::TextHead;
    case Command::None:
        break;
    }
    return {};
}

std::string Text(Command p_iCommand, const CItemManager& p_objItems) {
    switch (p_iCommand) {
    case Command::Parameters:
        return MCommand::MakeParameterSetCommand(p_objItems, MCommand::SetParameter);
    case Command::Adjustments:
        return MCommand::MakeParameterSetCommand(p_objItems, MCommand::SetAdjustment);
    case Command::IpAddress:
        return MCommand::MakeAddressCommand(p_objItems, MCommand::IpAddress);
    case Command::Gateway:
        return MCommand::MakeAddressCommand(p_objItems, MCommand::Gateway);
    case Command::SubnetMask:
        return MCommand::MakeAddressCommand(p_objItems, MCommand::SubnetMask);
    case Command::SocketPort:
        return MCommand::MakeSocketPortCommand(p_objItems);
    case Command::Dhcp:
        return MCommand::MakeDhcpCommand(p_objItems);
    case Command::None:
        break;
    }
    return {};
}

const std::vector<Command>& Commands() {
    return SendOrder;
}

}  // namespace MSettingRoute
