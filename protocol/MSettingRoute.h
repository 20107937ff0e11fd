#pragma once

#include "model/MSettings.h"

#include <cstdint>
#include <string>
#include <vector>

/// How a setting travels: the answer that reports it, the command that carries it. Both follow
/// from the catalogue's groups. A setting is a row of MSettings::All().
namespace MSettingRoute {

/// The commands that carry settings.
enum class Command : std::uint8_t {
    None,  ///< none does: the setting can only be read
    Parameters,
    Adjustments,
    IpAddress,
    Gateway,
    SubnetMask,
    SocketPort,
    Dhcp,
};

/// The answer group (MAnswer::Group) that reports p_objRow; MAnswer::NoGroup when none does.
std::int16_t ReportedIn(const MSettings::Row& p_objRow);

/// The command that carries p_objRow.
Command CarriedBy(const MSettings::Row& p_objRow);

/// What the command begins with, such as "{Z2;1,"; empty for None.
std::string Head(Command p_iCommand);

/// The text of the command with the values of p_objItems; empty for None. Throws as the builders
/// of MCommand do.
std::string Text(Command p_iCommand, const CItemManager& p_objItems);

/// The commands in the order in which they are sent, without None: addresses, port and DHCP last.
const std::vector<Command>& Commands();

}  // namespace MSettingRoute
