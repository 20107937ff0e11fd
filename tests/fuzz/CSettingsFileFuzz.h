#pragma once

#include "files/CSettingsFile.h"
#include "tests/fuzz/MFuzz.h"

/// What holds for a file of any bytes, as the reader of p_objFormat sees it: read in blocks, in
/// small pieces, and with a failure at its end. Aborts where it does not hold.
class CSettingsFileFuzz {
public:
    static void Run(const CSettingsFile::Format& p_objFormat, MFuzz::Input p_objInput);
};
