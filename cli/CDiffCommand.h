#pragma once

#include "cli/CEnvironment.h"
#include "cli/ICommand.h"

#include <string>
#include <vector>

/// "diff": compares settings from two places. What one of them does not know is told, and never
/// called the same.
class CDiffCommand : public ICommand {
public:
    explicit CDiffCommand(const CEnvironment& p_objEnvironment)
        : m_objSources(p_objEnvironment.m_objSources) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    [[nodiscard]] ISettingsSource::Fetch Open(const std::string& p_strName,
                                              COutput& p_objOutput) const;

    std::vector<ISettingsSource*> m_objSources;
    std::string m_strA;
    std::string m_strB;
};
