#pragma once

#include "tests/ui/recorder/CScriptedWire.h"

#include <string>
#include <vector>

/// What the window's buttons start.
namespace MFlows {

/// A flow that talks to the printer.
struct Flow {
    const char* m_strButton;
    int m_iCommands;     ///< how many commands it sends when nothing goes wrong
    int m_iUsbCommands;  ///< the same on USB
    bool m_bReads;       ///< it asks for settings; the others' answers are a status
};

/// All of them, in the order of their buttons.
const std::vector<Flow>& Talking();

[[nodiscard]] int CommandsOf(const Flow& p_objFlow, LinkKind p_iLink);

/// "COM", "LAN", "USB".
const char* NameOf(LinkKind p_iLink);

inline constexpr LinkKind AllLinks[]{LinkKind::Com, LinkKind::Lan, LinkKind::Usb};

/// A set of links.
using Links = unsigned;
inline constexpr Links Com = 1;
inline constexpr Links Lan = 2;
inline constexpr Links Usb = 4;
inline constexpr Links Any = Com | Lan | Usb;

[[nodiscard]] constexpr bool Has(Links p_iLinks, LinkKind p_iLink) {
    return (p_iLinks >> static_cast<unsigned>(p_iLink) & 1U) != 0;
}

}  // namespace MFlows
