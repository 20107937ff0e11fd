#pragma once

#include "platform/CPrinterPlatform.h"
#include "platform/IFileDialog.h"
#include "platform/IFileStore.h"

#include <string>

/// Everything that lies outside the program, handed in from outside. Nothing that it refers to is
/// owned; all of it outlives whoever gets it.
struct CPlatform : CPrinterPlatform {
    IFileDialog& m_objFileDialog;
    IFileStore& m_objFileStore;
    std::string m_strProgramFolder;  ///< where the program itself lies; file dialogs open there
};
