#pragma once

#include "platform/CFilePlatform.h"
#include "platform/CPrinterPlatform.h"

/// Everything that lies outside the program, handed in from outside. Nothing that it refers to is
/// owned; all of it outlives whoever gets it.
struct CPlatform : CPrinterPlatform, CFilePlatform {};
