#pragma once

#include "cli/ICommand.h"

#include <string>
#include <vector>

/// "list": the settings that there are, and what they can be.
class CListCommand : public ICommand {
public:
    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    std::vector<std::string> m_strSettings;  // none: all
};
