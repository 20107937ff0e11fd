#pragma once

#include "tests/ui/recorder/MAnswerFaults.h"
#include "tests/ui/recorder/MFlows.h"

#include <functional>
#include <string>
#include <vector>

/// The faults that a flow of the window can meet: the columns of the fault table. What is in the
/// recordings already is taken from there.
namespace MFaults {

/// When a fault strikes.
enum class Strikes : std::uint8_t {
    Opening,  ///< the link is opened by Setup, which fails; then the button is pressed
    Command,  ///< a command of the flow, or its answer: the first, the last, or each one
};

/// What is claimed of a fault beforehand, whatever comes of it.
using Claims = unsigned;
inline constexpr Claims Closes = 1;  ///< the window is closed
inline constexpr Claims Alters = 2;  ///< whole answers, in whose fields something else stands
inline constexpr Claims NotWhole =
    4;  ///< the answer to the command does not come whole, or not in time
inline constexpr Claims Presses = 8;  ///< the button is pressed again in the middle
inline constexpr Claims Many = 16;    ///< takes long to play: for one flow of each kind
inline constexpr Claims Core = 32;  ///< one of each kind: for all flows, and for last commands, too
inline constexpr Claims ByItself = 64;   ///< tells of itself whenever it happens, also at rest
inline constexpr Claims Awaited = 128;   ///< meets only flows that await their answer on each link
inline constexpr Claims OneMore = 256;   ///< gives a status more than was asked for
inline constexpr Claims Each = 512;      ///< strikes each command, also those in the middle
inline constexpr Claims Late = 1024;     ///< the answer comes when the flow is over
inline constexpr Claims Twice = 2048;    ///< the button is pressed again when the flow is over
inline constexpr Claims InPause = 4096;  ///< meets only flows that pause behind an answer
inline constexpr Claims Behind = 8192;   ///< strikes behind the last byte of the answer, at once

struct Fault {
    std::string m_strName;
    MFlows::Links m_iLinks;
    MAnswerFaults::Asked m_iAsked;
    Strikes m_iStrikes;
    Claims m_iClaims;
    MFlows::Links m_iHarmless;  ///< where the flow ends as if nothing had been wrong
    /// Prepares the scene for it to strike command number p_iCommand.
    std::function<void(CScene& p_objScene, int p_iCommand)> m_fnPrepare;

    [[nodiscard]] bool Has(Claims p_iClaim) const { return (m_iClaims & p_iClaim) != 0; }
};

/// The first one is none.
const std::vector<Fault>& All();

}  // namespace MFaults
