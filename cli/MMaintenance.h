#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The maintenance functions of a printer, as a command line names them and what they take: one row
/// a function.
namespace MMaintenance {

/// What the fields of a function are set to, in their order: positions in lists, counted from 0
/// (MChoiceLists::NoSelection: nothing is chosen), and numbers as people see them.
using Values = std::vector<std::int16_t>;

struct Field {
    /// Whether a command line has to set it.
    enum class Given : std::uint8_t {
        MustBe,
        MayBe,      ///< it has the value that the window shows at its start unless it is set
        MayBeNone,  ///< nothing is chosen unless it is set
    };

    std::string_view m_strName;    ///< "print-speed"
    std::string_view m_strChoice;  ///< a list's or a number's in MChoiceLists
    Given m_iGiven = Given::MayBe;
};

struct Function {
    /// When the printer is asked for its status besides: its answer to the command tells no more
    /// than that it has taken it.
    enum class Asks : std::uint8_t { Never, OnUsb, Always };

    std::string_view m_strName;     ///< "ram-clear"
    std::string_view m_strMeaning;  ///< what it does to the printer: "prints test labels on"
    std::vector<Field> m_objFields;
    /// It changes something in the printer, or uses labels up.
    bool m_bConfirm = true;
    /// The texts of its commands, in their order.
    std::vector<std::string> (*m_fnCommands)(const Values& p_iValues) = nullptr;
    Asks m_iAsks = Asks::Never;
    double m_dPause = 0;  ///< seconds, before it is asked
};

/// All functions.
std::span<const Function> All();

/// The function of that name, or null.
const Function* Find(std::string_view p_strName);

/// An entry of a list as command lines name it: "SLANT LINE(1DOT)" is "slant-line-1dot".
std::string NameOf(std::string_view p_strEntry);

/// The names of a field's values in their order; none for a number.
std::vector<std::string> NamesOf(const Field& p_objField);

/// In words what a field can be: "reflect or trans", "1 to 5000".
std::string AllowedText(const Field& p_objField);

/// A field's value as NameOf and people write it; empty where nothing is chosen.
std::string Text(const Field& p_objField, std::int16_t p_iValue);

/// Reads "NAME=VALUE" words into the values of a function. What is wrong in them, all of it, is
/// added to p_strProblems.
Values Read(const Function& p_objFunction, const std::vector<std::string>& p_strWords,
            std::vector<std::string>& p_strProblems);

/// What the functions take, for the help.
std::string HelpText();

}  // namespace MMaintenance
