#include "simulator/MCommandKind.h"

#include "protocol/MCommand.h"

#include <algorithm>
#include <array>

namespace {

using MCommandKind::Kind;

struct Row {
    Kind m_iKind;
    std::string_view m_strHead;
    std::string_view m_strName;
};

// One row a kind, in the order of Kind. No head begins another, so the order decides nothing.
// clang-format off
constexpr std::array<Row, MCommandKind::KindCount> Kinds{{
    {Kind::Status, "{WS", "status request"},
    {Kind::ReadSettings, "{Z5;", "read settings"},
    {Kind::SetParameters, "{Z2;1,", "set parameters"},
    {Kind::SetAdjustments, "{Z2;2,", "set adjustments"},
    {Kind::SetIpAddress, "{IP;2,", "set IP address"},
    {Kind::SetGateway, "{IP;3,", "set gateway"},
    {Kind::SetSubnetMask, "{IP;4,", "set subnet mask"},
    {Kind::SetSocketPort, "{IS;", "set socket port"},
    {Kind::SetDhcp, "{IH;", "set DHCP"},
    {Kind::HeadCheck, "{HD", "head check"},
    {Kind::RamClear, MCommand::RamClearHead, "RAM clear"},
    {Kind::ThresholdCalib, "{WT;", "threshold calibration"},
    {Kind::SensorAdjust, MCommand::SensorAdjustPaperEndHead, "sensor adjustment"},
    {Kind::TestPrint, MCommand::TestPrintHead, "test print"},
    {Kind::DiagPrint, MCommand::DiagPrintHead, "diagnostic print"},
    {Kind::Unknown, "", "unknown command"},
}};
// clang-format on

}  // namespace

namespace MCommandKind {

std::string_view Name(Kind p_iKind) {
    return Kinds.at(static_cast<std::size_t>(p_iKind)).m_strName;
}

Kind Identify(std::string_view p_strCommand) {
    const auto* const objFound = std::find_if(Kinds.begin(), Kinds.end(), [&](const Row& p_objRow) {
        return p_strCommand.starts_with(p_objRow.m_strHead);
    });
    return objFound->m_iKind;  // the last row's head is empty: something is always found
}

std::string_view Head(Kind p_iKind) {
    return Kinds.at(static_cast<std::size_t>(p_iKind)).m_strHead;
}

}  // namespace MCommandKind
