#pragma once

#include "cli/CFileContent.h"
#include "model/CSnapshot.h"
#include "platform/IFileStore.h"

#include <string>
#include <vector>

/// The settings that a command line wants a printer to have, and everything that is wrong with
/// them.
class CWantedSettings {
public:
    /// Takes a file's settings, but for those that no command carries. Throws CCommandError when it
    /// is no right settings file.
    void TakeFile(IFileStore& p_objFiles, const std::string& p_strPath);

    /// Takes words of the form SETTING=VALUE, which count more than those of a file.
    void TakeWords(const std::vector<std::string>& p_strWords);

    /// Known is what is wanted.
    [[nodiscard]] const CSnapshot& Wanted() const { return m_objWanted; }
    [[nodiscard]] bool IsEmpty() const;

    /// Settings of the file that a printer cannot be told.
    [[nodiscard]] const std::vector<std::string>& LeftOut() const { return m_strLeftOut; }

    [[nodiscard]] const std::vector<CFileProblem>& Problems() const { return m_objProblems; }

    /// A value for one setting that is not wanted itself; a problem when it is none.
    CSnapshot Value(const std::string& p_strName, const std::string& p_strValue);

    /// Adds a problem of the whole.
    void Add(const std::string& p_strSetting, const std::string& p_strReason);

private:
    void TakeWord(const std::string& p_strWord);
    bool Set(const MSettings::Row& p_objRow, const std::string& p_strValue,
             CSnapshot& p_objSnapshot);

    CSnapshot m_objWanted;
    std::vector<std::string> m_strNamed;
    std::vector<std::string> m_strLeftOut;
    std::vector<CFileProblem> m_objProblems;
};
