#pragma once

#include "platform/IFileDialog.h"
#include "platform/IFileStore.h"

#include <string>
#include <vector>

/// What every handler that saves or loads a file shares.
namespace MFileDialog {

/// Fills p_objRecord for a dialog: everything else in it becomes zero or empty.
void InitFileDialogRecord(CFileDialogRecord& p_objRecord, const std::string& p_strFilter,
                          const std::string& p_strDialogTitle,
                          const std::string& p_strInitialFolder);

/// Joins display names and patterns, taken in turns, into a record's filter: each ended by a NUL,
/// one more at the end; a last display name without a pattern gets "*.*". Empty for no texts.
std::string BuildFileFilter(const std::vector<std::string>& p_strTexts);

/// True when a listing of the path's folder shows a file there; see IFileStore::Exists.
bool FileExists(const IFileStore& p_objFileStore, const std::string& p_strPath);

/// Shows the save dialog. The chosen path without blanks around it, or "" when there is none.
/// With the first filter pair chosen a name that does not end in exactly "." p_strExtension gets
/// that ending ("a.DT1" becomes "a.DT1.dt1").
std::string ShowSaveFileDialog(IFileDialog& p_objFileDialog, CFileDialogRecord& p_objRecord,
                               const std::string& p_strExtension);

/// Shows the open dialog. The chosen path without blanks around it, or "" when there is none.
std::string ShowOpenFileDialog(IFileDialog& p_objFileDialog, CFileDialogRecord& p_objRecord);

}  // namespace MFileDialog
