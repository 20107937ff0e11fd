#include "tests/platform_qt/CTestDriver.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

CTestDriver& CTestDriver::Instance() {
    static CTestDriver objDriver;
    return objDriver;
}

// These take the place of the C library's, for the toolkit's library as well.

extern "C" int ioctl(int p_iFile, unsigned long p_iRequest, ...) noexcept {
    std::va_list objArguments;
    va_start(objArguments, p_iRequest);
    void* const objArgument = va_arg(objArguments, void*);
    va_end(objArguments);
    const CTestDriver& objDriver = CTestDriver::Instance();
    if (p_iRequest == TIOCMGET && objDriver.m_iLines) {
        std::memcpy(objArgument, &*objDriver.m_iLines, sizeof *objDriver.m_iLines);
        return 0;
    }
    if (p_iRequest == TIOCGICOUNT && objDriver.m_objCounts) {
        std::memcpy(objArgument, &*objDriver.m_objCounts, sizeof *objDriver.m_objCounts);
        return 0;
    }
    return static_cast<int>(::syscall(SYS_ioctl, p_iFile, p_iRequest, objArgument));
}

extern "C" ssize_t write(int p_iFile, const void* p_objBytes, size_t p_iCount) {
    CTestDriver& objDriver = CTestDriver::Instance();
    const bool bTakes =
        objDriver.m_iMostRefusals > 0 && objDriver.m_iRefusals >= objDriver.m_iMostRefusals;
    if (p_iFile >= 0 && p_iFile == objDriver.m_iRefusing && !bTakes) {
        ++objDriver.m_iRefusals;
        errno = EAGAIN;
        return -1;
    }
    return ::syscall(SYS_write, p_iFile, p_objBytes, p_iCount);
}

extern "C" int tcsetattr(int p_iFile, int p_iWhen, const termios* p_objSettings) noexcept {
    using Function = int (*)(int, int, const termios*);
    static const auto fnLibrary = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "tcsetattr"));
    CTestDriver::Instance().m_objSettings.push_back(*p_objSettings);
    return fnLibrary(p_iFile, p_iWhen, p_objSettings);
}
