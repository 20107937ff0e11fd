#pragma once

#include <string>

/// The names that a file being saved bears beside the one whose place it is going to take.
///
/// They are ".varden-save-", sixteen digits made of the target's name, "-" and a number, ".tmp":
/// few enough to look at each of them, and short whatever the target's name is. Whoever saves
/// holds a lock on his file for as long as it bears one of them; the system drops it when the
/// program ends, in whatever way. So a file of such a name that nobody has locked is what a save
/// that was killed has left.
namespace MSaveName {

/// How many saves of a file may be under way at a time, or have left something.
inline constexpr int Count = 8;

/// The name with a number, 0 to Count - 1.
std::string Of(const std::string& p_strTarget, int p_iNumber);

/// Locks an open file; false when somebody else has locked it. Where the file system has no locks
/// this is true, and nothing is ever taken for left.
bool Lock(int p_iFile);

/// True when p_strName in the folder is this open file and no other.
bool IsNameOf(int p_iFolder, const std::string& p_strName, int p_iFile);

/// Removes what a save that was killed has left under p_strName. Anything else that bears it stays:
/// the file of a save under way, a folder, a link, a file that has a second name.
void RemoveLeftOver(int p_iFolder, const std::string& p_strName);

}  // namespace MSaveName
