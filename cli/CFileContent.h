#pragma once

#include "cli/CCommandError.h"
#include "model/CSnapshot.h"

#include <cstddef>
#include <string>
#include <vector>

/// Something that is wrong in a settings file. Texts are UTF-8.
struct CFileProblem {
    std::size_t m_iLine = 0;   ///< counted from 1; 0 where it is no line's
    std::string m_strSetting;  ///< empty where it is no setting's
    std::string m_strReason;

    /// In one line.
    [[nodiscard]] std::string Text() const;
};

/// What stands in a settings file, and everything that is wrong in it.
struct CFileContent {
    CSnapshot m_objSnapshot;  ///< what could be read; of a value that is none, what stands there
    std::vector<CFileProblem> m_objProblems;

    void Add(std::size_t p_iLine, std::string_view p_strSetting, const std::string& p_strReason) {
        m_objProblems.push_back({p_iLine, std::string(p_strSetting), p_strReason});
    }

    /// The failure that the problems are, with the first of them. There is one at least.
    [[nodiscard]] CCommandError Error(const std::string& p_strPath) const;
};
