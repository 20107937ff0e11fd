#pragma once

#include "tests/cli/faults/MFaults.h"

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>

/// Every command of the command line that asks a printer: the rows of the table of faults.
namespace MFaultRows {

/// A moment of a command at which something goes wrong: one of the commands that it sends.
struct Moment {
    std::string m_strMeaning;   ///< for people
    std::string m_strHead;      ///< what that command begins with
    std::size_t m_iNumber = 0;  ///< which of those that do, counted from 0
    std::string m_strBehind{};  ///< counted from the last command that begins so
    bool m_bOpens = true;       ///< a connection begins with it
    bool m_bOnce = false;       ///< also tried with what passes by itself

    /// Its place among the commands that are sent when nothing goes wrong; none: past the end.
    [[nodiscard]] std::size_t Place(const std::vector<std::string>& p_strCommands) const;
};

struct Row {
    /// What a command changes.
    enum class Changes : std::uint8_t {
        Nothing,
        Settings,  ///< of the printer, or nothing
        Function,  ///< what the printer makes of it
        Journal,   ///< how a change that was cut off is ended
    };

    std::string m_strName;                ///< of the file with what is expected
    std::vector<std::string> m_strWords;  ///< "TARGET" stands for the printer
    std::vector<Moment> m_objMoments;
    Changes m_iChanges = Changes::Nothing;
    std::vector<MFaults::Link> m_iLinks;
    double m_dMost = 0;  ///< so many seconds, whatever happens
    /// What is changed before, and cut off: the row goes on from there.
    std::vector<std::string> m_strBefore{};
    bool m_bFloods = false;  ///< also tried with floods, which take long to make

    /// The settings that its words name, with the values that they are to have.
    [[nodiscard]] std::map<std::string, std::string> Wanted() const;
    [[nodiscard]] std::string CommandLine() const;  ///< "varden read TARGET"
};

std::span<const Row> All();

/// The target of a link: "lan:printer", ...
std::string Target(MFaults::Link p_iLink);

}  // namespace MFaultRows
