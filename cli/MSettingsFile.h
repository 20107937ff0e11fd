#pragma once

#include "cli/CFileContent.h"
#include "files/CSettingsFile.h"
#include "platform/IFileStore.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The kinds of settings file: the window's two, which hold a printer's commands (.dt1 the
/// parameters and adjustments, .dt2 the network's settings), and the command line's own (.json).
namespace MSettingsFile {

enum class Kind : std::uint8_t { Parameters, Lan, Json };

/// A larger file is none of settings, and is not read.
inline constexpr std::size_t LargestFile = 1024 * 1024;

/// The kind that a file's extension tells, whatever its case. Throws CCommandError for any other.
Kind KindOf(const std::string& p_strPath);

/// "dt1", "dt2" or "json".
const char* Name(Kind p_iKind);

/// Whether files of the kind can hold a setting. A file of commands holds all that it can, a JSON
/// file those that are known.
bool CanHold(Kind p_iKind, const MSettings::Row& p_objRow);

/// Reads a file to its end, whatever is wrong in it. Throws CCommandError when it cannot be read at
/// all, or is too large.
CFileContent Read(IFileStore& p_objFiles, const std::string& p_strPath);

/// Writes a file, all or nothing. p_objSnapshot holds values of the settings alone, and of a file
/// of commands all that it can hold. Throws CCommandError when it cannot be written.
void Write(IFileStore& p_objFiles, const std::string& p_strPath, const CSnapshot& p_objSnapshot);

/// The failure that a file, of whatever kind, could not be written; why, as far as the system
/// tells.
CCommandError Unwritable(const std::string& p_strPath);

}  // namespace MSettingsFile
