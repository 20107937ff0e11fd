#pragma once

#include "platform/CFileDialogRecord.h"

/// The system's modal dialogs for choosing a file. Paths are bytes in the system's own encoding.
///
/// Neither dialog asks about overwriting or insists on a file that exists, and neither adds an
/// extension. A pattern "*.*" shows every file, also one without a dot. Once the program is
/// closing they return false at once.
class IFileDialog {
public:
    virtual ~IFileDialog() = default;

    /// Lets a person choose where to save. True with the path (NUL-terminated) and the number of
    /// the chosen filter pair in p_objRecord; false when nothing was chosen, or when the path is
    /// longer than the record's buffer holds: a path is never cut.
    virtual bool GetSaveFileName(CFileDialogRecord& p_objRecord) = 0;

    /// The same for a file to open.
    virtual bool GetOpenFileName(CFileDialogRecord& p_objRecord) = 0;
};
