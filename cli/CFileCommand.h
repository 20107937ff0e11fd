#pragma once

#include "cli/CEnvironment.h"
#include "cli/CFileContent.h"
#include "cli/ICommand.h"

#include <string>
#include <vector>

/// "file": shows a settings file, checks it, saves it as another kind.
class CFileCommand : public ICommand {
public:
    explicit CFileCommand(const CEnvironment& p_objEnvironment)
        : m_objFiles(p_objEnvironment.m_objFiles) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    void Tell(const CFileContent& p_objContent, COutput& p_objOutput) const;
    void Save(const CSnapshot& p_objSnapshot, COutput& p_objOutput) const;

    IFileStore& m_objFiles;
    std::string m_strFile;
    std::string m_strSave;  // empty: not to be saved
    bool m_bCheck = false;
    bool m_bDefaults = false;
    bool m_bForce = false;
};
