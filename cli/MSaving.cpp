#include "cli/MSaving.h"

#include <filesystem>
#include <system_error>

namespace MSaving {

using Kind = MSettingsFile::Kind;
using MSettings::Row;

Fit FitOf(Kind p_iKind, const CSnapshot& p_objSnapshot) {
    Fit objFit;
    for (const Row& objRow : MSettings::All()) {
        const bool bHolds = MSettingsFile::CanHold(p_iKind, objRow);
        const bool bKnown = p_objSnapshot.IsKnown(objRow);
        // A JSON file has room for all, and needs none.
        if (bHolds && !bKnown && p_iKind != Kind::Json) {
            objFit.m_strMissing.emplace_back(objRow.m_strName);
        } else if (!bHolds && bKnown) {
            objFit.m_strLeftOut.emplace_back(objRow.m_strName);
        }
    }
    return objFit;
}

std::string Joined(const std::vector<std::string>& p_strNames) {
    std::string strText;
    for (const std::string& strName : p_strNames) {
        strText += (strText.empty() ? "" : ", ") + strName;
    }
    return strText;
}

void CheckFree(const std::string& p_strPath, bool p_bForce) {
    std::error_code objError;
    if (!p_bForce &&
        std::filesystem::exists(std::filesystem::symlink_status(p_strPath, objError))) {
        throw CCommandError(
            MExitCode::Wrong,
            {p_strPath + " is there already", {}, p_strPath, "--force replaces it"});
    }
}

void Save(IFileStore& p_objFiles, const std::string& p_strPath, CSnapshot p_objSnapshot,
          COutput& p_objOutput) {
    const Kind iKind = MSettingsFile::KindOf(p_strPath);
    const Fit objFit = FitOf(iKind, p_objSnapshot);
    for (const std::string& strName : objFit.m_strMissing) {
        p_objSnapshot.SetKnown(MSettings::Get(strName));
    }
    MSettingsFile::Write(p_objFiles, p_strPath, p_objSnapshot);
    p_objOutput.Json()["saved"] = {{"file", p_strPath},
                                   {"format", MSettingsFile::Name(iKind)},
                                   {"filled", objFit.m_strMissing},
                                   {"omitted", objFit.m_strLeftOut}};
    p_objOutput.Say("Saved " + p_strPath);
    if (!objFit.m_strMissing.empty()) {
        p_objOutput.Note("set to their defaults: " + Joined(objFit.m_strMissing));
    }
    if (!objFit.m_strLeftOut.empty()) {
        p_objOutput.Note("left out, a ." + std::string(MSettingsFile::Name(iKind)) +
                         " file has no room for them: " + Joined(objFit.m_strLeftOut));
    }
}

}  // namespace MSaving
