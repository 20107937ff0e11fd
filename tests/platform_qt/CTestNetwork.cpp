#include "tests/platform_qt/CTestNetwork.h"

#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

CTestNetwork& CTestNetwork::Instance() {
    static CTestNetwork objNetwork;
    return objNetwork;
}

// Takes the place of the C library's.
extern "C" int connect(int p_iSocket, const sockaddr* p_objAddress, socklen_t p_iLength) {
    if (const int iError = CTestNetwork::Instance().TakeError()) {
        errno = iError;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_connect, p_iSocket, p_objAddress, p_iLength));
}
