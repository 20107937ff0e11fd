#pragma once

#include "cli/CTarget.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// Everything that can go wrong between a command of the command line and its printer, on each
/// link: the columns of the table of faults.
namespace MFaults {

using Link = CTarget::Link;

enum class Kind : std::uint8_t {
    None,
    // Opening the link.
    NothingThere,
    Refused,
    NoRoute,
    NoName,
    NotPermitted,
    Held,
    NoPrinter,  ///< something else is there
    NotIdentified,
    NoReaction,
    GoneAtOnce,  ///< it opens, and is gone before anything is sent
    // Sending a command.
    NotTaken,
    BrokenSending,
    // What comes back.
    Silent,
    Late,
    LateInTime,
    SingleBytes,
    Twice,
    Cut,
    OtherGroup,
    OtherGroupFirst,
    OtherKind,
    Junk1,
    Junk100,
    Junk64K,
    Junk1M,
    JunkBefore1,
    JunkBefore100,
    Endless,
    // The connection's end.
    ClosedBefore,
    ClosedInside,
    ClosedAfter,
    Reset,
    // What the answer says.
    OutOfRange,
    NoNumbers,
    UnknownStatus,
    ErrorStatus,
    Refusal,
    // Ctrl-C.
    InterruptedOpening,
    InterruptedSending,
    InterruptedWaiting,
    InterruptedBetween,
};

/// To which commands of a printer it can happen.
enum class Where : std::uint8_t {
    Begin,     ///< the first of all: floods, which take long to make
    Opening,   ///< the first of a connection; on USB, which is opened for each, any
    Any,       ///< any
    Settings,  ///< those that settings are the answer to
    Status,    ///< those that a status is the answer to
    Followed,  ///< those behind which another one follows
};

struct Fault {
    Kind m_iKind = Kind::None;
    Where m_iWhere = Where::Any;
    std::string_view m_strMeaning;  ///< for people
    std::vector<Link> m_iLinks;     ///< where there is such a thing
    /// One that stands for its like where a change of settings is met in its middle: such a cell
    /// takes long.
    bool m_bStands = false;
};

/// All but None, in the order of the page.
std::span<const Fault> All();

/// "LAN", "COM", "USB"
std::string_view Name(Link p_iLink);

inline constexpr bool IsInterruption(Kind p_iKind) {
    return p_iKind >= Kind::InterruptedOpening;
}

}  // namespace MFaults
