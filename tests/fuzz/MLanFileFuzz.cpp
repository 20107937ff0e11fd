#include "files/MLanFile.h"
#include "tests/fuzz/CSettingsFileFuzz.h"

#include <cstddef>
#include <cstdint>

// The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* p_arrBytes, std::size_t p_iCount) {
    CSettingsFileFuzz::Run({&MLanFile::BuildLines, &MLanFile::StoreLine}, p_arrBytes, p_iCount);
    return 0;
}
