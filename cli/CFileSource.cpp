#include "cli/CFileSource.h"

#include "cli/MSettingsFile.h"

ISettingsSource::Fetch CFileSource::Open(const std::string& p_strName, COutput& /*p_objOutput*/) {
    const CFileContent objContent = MSettingsFile::Read(m_objFiles, p_strName);
    if (!objContent.m_objProblems.empty()) {
        throw objContent.Error(p_strName);
    }
    CLoadedSettings objLoaded{p_strName, objContent.m_objSnapshot, {{"", "it is not in the file"}}};
    return [objLoaded] { return objLoaded; };
}
