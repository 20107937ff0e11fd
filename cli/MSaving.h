#pragma once

#include "cli/COutput.h"
#include "cli/MSettingsFile.h"

#include <string>
#include <vector>

/// Saving settings in a file, and telling about it.
namespace MSaving {

/// How well settings go with a kind of file: names of settings, in the catalogue's order.
struct Fit {
    std::vector<std::string> m_strMissing;  ///< such a file has to hold them; they are not known
    std::vector<std::string> m_strLeftOut;  ///< they are known; such a file has no room for them
};

Fit FitOf(MSettingsFile::Kind p_iKind, const CSnapshot& p_objSnapshot);

/// Texts with a comma between them.
std::string Joined(const std::vector<std::string>& p_strNames);

/// Throws CCommandError when anything stands at the path, hidden or not, and be it a link that
/// leads nowhere; unless p_bForce is true.
void CheckFree(const std::string& p_strPath, bool p_bForce);

/// Writes the file, what is missing at its default, and tells that, also in the object's "saved".
/// Throws CCommandError when it cannot be written.
void Save(IFileStore& p_objFiles, const std::string& p_strPath, CSnapshot p_objSnapshot,
          COutput& p_objOutput);

}  // namespace MSaving
