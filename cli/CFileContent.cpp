#include "cli/CFileContent.h"

std::string CFileProblem::Text() const {
    std::string strText;
    if (m_iLine > 0) {
        strText = "line " + std::to_string(m_iLine) + ": ";
    }
    if (!m_strSetting.empty()) {
        strText += m_strSetting + ": ";
    }
    return strText + m_strReason;
}

CCommandError CFileContent::Error(const std::string& p_strPath) const {
    const std::size_t iFurther = m_objProblems.size() - 1;
    return {MExitCode::Wrong,
            {p_strPath + " is no right settings file",
             m_objProblems.front().Text() +
                 (iFurther > 0 ? ", and " + std::to_string(iFurther) + " more" : ""),
             p_strPath, "varden file " + p_strPath + " --check tells everything"}};
}
