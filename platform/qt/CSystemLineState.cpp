#include "platform/qt/CSystemLineState.h"

#ifdef Q_OS_WIN

#include <windows.h>

ILineState::Reading CSystemLineState::Read(Handle p_iPort) const {
    Reading objReading;
    DWORD iLines = 0;
    if (::GetCommModemStatus(p_iPort, &iLines) != 0) {
        objReading.m_bClearToSend = (iLines & MS_CTS_ON) != 0;
    }
    return objReading;
}

#else

#include <sys/ioctl.h>
#ifdef Q_OS_LINUX
#include <linux/serial.h>
#endif

ILineState::Reading CSystemLineState::Read(Handle p_iPort) const {
    Reading objReading;
    int iLines = 0;
    if (::ioctl(p_iPort, TIOCMGET, &iLines) == 0) {
        objReading.m_bClearToSend = (iLines & TIOCM_CTS) != 0;
    }
#ifdef Q_OS_LINUX
    serial_icounter_struct objCounts{};
    if (::ioctl(p_iPort, TIOCGICOUNT, &objCounts) == 0) {
        objReading.m_iOverruns = objCounts.overrun;
    }
#endif
    return objReading;
}

#endif
