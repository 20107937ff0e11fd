#pragma once

#include "cli/CEnvironment.h"
#include "cli/ICommand.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

/// The program: finds the command that a command line names, has it done, and is the one trap for
/// what goes wrong.
class CProgram {
public:
    static constexpr const char* Name = "varden";

    /// p_objEnvironment's parts are not owned and outlive this.
    explicit CProgram(const CEnvironment& p_objEnvironment);
    ~CProgram();
    CProgram(const CProgram&) = delete;
    CProgram& operator=(const CProgram&) = delete;

    /// The tables of the command line: a table a command, with its options and arguments.
    [[nodiscard]] const CLI::App& Tables() const { return *m_objTables; }

    /// Runs a command line, given without the program's own name. To be called once.
    MExitCode::Code Run(const std::vector<std::string>& p_strArguments, COutput& p_objOutput);

private:
    void AddCommand(std::string_view p_strName, std::string_view p_strSummary,
                    std::unique_ptr<ICommand> p_objCommand);
    MExitCode::Code Do(const std::vector<std::string>& p_strArguments, COutput& p_objOutput);
    void Parse(const std::vector<std::string>& p_strArguments);

    std::unique_ptr<CLI::App> m_objTables;
    std::vector<std::unique_ptr<ICommand>> m_objCommands;  // in the order of the tables
    bool m_bJson = false;
};
