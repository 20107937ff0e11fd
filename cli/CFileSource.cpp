#include "cli/CFileSource.h"

#include "cli/MSettingsFile.h"

CLoadedSettings CFileSource::Load(const std::string& p_strName) {
    const CFileContent objContent = MSettingsFile::Read(m_objFiles, p_strName);
    if (!objContent.m_objProblems.empty()) {
        throw objContent.Error(p_strName);
    }
    return {p_strName, objContent.m_objSnapshot, {{"", "it is not in the file"}}};
}
