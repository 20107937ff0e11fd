#pragma once

#include "platform/IFileDialog.h"
#include "platform/IFileStore.h"
#include "platform/IMessageBox.h"

#include <string>

/// What lies outside of the program on the way to a file that a person chooses. Nothing that it
/// refers to is owned; all of it outlives whoever gets it.
struct CFilePlatform {
    IMessageBox& m_objMessageBox;
    IFileDialog& m_objFileDialog;
    IFileStore& m_objFileStore;
    std::string m_strProgramFolder;  ///< where the program itself lies; file dialogs open there
};
