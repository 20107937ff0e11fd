#pragma once

#include <cstddef>
#include <string_view>

/// The kinds of command that the printer tells apart.
namespace MCommandKind {

enum class Kind {
    Status,
    ReadSettings,
    SetParameters,
    SetAdjustments,
    SetIpAddress,
    SetGateway,
    SetSubnetMask,
    SetSocketPort,
    SetDhcp,
    HeadCheck,
    RamClear,
    ThresholdCalib,
    SensorAdjust,
    TestPrint,
    DiagPrint,
    Unknown,  ///< begins like no command of the printer's
};

inline constexpr std::size_t KindCount = static_cast<std::size_t>(Kind::Unknown) + 1;

/// What a kind is called in everything that is printed, such as "read settings".
std::string_view Name(Kind p_iKind);

/// The kind of a command, told by how it begins; what follows is not looked at.
Kind Identify(std::string_view p_strCommand);

/// The text with which every command of a kind begins, such as "{Z5;"; empty for Unknown.
std::string_view Head(Kind p_iKind);

}  // namespace MCommandKind
