#include <netdb.h>
#include <unistd.h>

// Preloaded into a program: whatever name it looks up, the answer takes longer than anybody waits.

extern "C" int getaddrinfo(const char* /*p_strName*/, const char* /*p_strService*/,
                           const addrinfo* /*p_objHints*/, addrinfo** /*p_objResult*/) {
    constexpr unsigned iSeconds = 45;
    ::sleep(iSeconds);
    return EAI_AGAIN;
}
