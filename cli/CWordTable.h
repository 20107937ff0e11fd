#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// The words of the command line, read off its tables: what completion is made from.
struct CWordTable {
    /// An option of a command.
    struct Option {
        std::vector<std::string> m_strNames;  ///< "-h" and "--help"
        std::string m_strMeaning;
        std::string m_strKind;  ///< of its value, by MArgumentKind; empty: it has none
    };

    /// An argument of a command.
    struct Argument {
        std::string m_strName;
        std::string m_strMeaning;
        std::string m_strKind;
        bool m_bMany = false;  ///< as many as one likes; the last argument then
    };

    /// A command; of the program itself that without a name.
    struct Command {
        std::string m_strName;
        std::string m_strSummary;
        std::vector<Option> m_objOptions;
        std::vector<Argument> m_objArguments;
    };

    /// p_objTables is the program's own table.
    explicit CWordTable(const CLI::App& p_objTables);

    Command m_objProgram;                ///< its options go in front of a command
    std::vector<Command> m_objCommands;  ///< in the order of the tables

    /// Every kind that stands somewhere in the table, once.
    [[nodiscard]] std::vector<std::string> Kinds() const;
};
