#pragma once

#include "cli/ICommand.h"

#include <string>

/// "completion": the script by which a shell completes the program's words.
class CCompletionCommand : public ICommand {
public:
    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    const CLI::App* m_objTable = nullptr;
    std::string m_strShell;
};
