#include <cstddef>
#include <cstring>

/// As many bytes as only the caller knows, into a buffer whose size the compiler knows.
char Buffer[8];
void Fill(const char* p_strBytes, std::size_t p_iCount);

void Fill(const char* p_strBytes, std::size_t p_iCount) {
    std::memcpy(Buffer, p_strBytes, p_iCount);
}
