#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

/// What comes of every command that asks a printer, whatever the printer does, on every link: one
/// table, which is tested with the program and the simulated printer, and of which docs/outcomes.md
/// is made.
namespace MOutcomes {

enum Link : std::size_t { Lan, Com, Usb, Links };
enum Command : std::size_t { Read, Status, Diff, Maintain, Commands };

struct Outcome {
    int m_iCode = 0;
    /// What fails; "TARGET" stands for the target. Empty: nothing does.
    std::string m_strWhat{};
    /// How many requests the printer receives whole: the first ones of Requests.
    std::size_t m_iRequests = 0;
    std::string m_strStatus{};  ///< the code that "status" and "maintain" tell
};

/// What comes of the commands, in their order, on one link.
using Outcomes = std::array<Outcome, Commands>;

struct Fault {
    std::string m_strName;                  ///< of the test
    std::string m_strMeaning;               ///< for the page
    std::vector<std::string> m_strOptions;  ///< of the simulator
    std::array<Outcomes, Links> m_objOutcomes{};
    bool m_bNobody = false;  ///< the target leads to no printer
};

std::span<const Fault> Faults();

/// "LAN"
const char* Name(Link p_iLink);

/// "read"
const char* Name(Command p_iCommand);

/// The words of a command line; "TARGET" stands for the target.
std::vector<std::string> Words(Command p_iCommand);

/// What a command asks of a printer without faults, in its order.
std::vector<std::string> Requests(Command p_iCommand);

/// docs/outcomes.md
std::string Page();

}  // namespace MOutcomes
