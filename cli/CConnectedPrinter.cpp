#include "cli/CConnectedPrinter.h"

namespace {

std::chrono::milliseconds Milliseconds(double p_dSeconds) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::duration<double>(p_dSeconds));
}

/// How long one look for an answer on USB lasts; as long as an answer may take there is another.
constexpr std::chrono::milliseconds UsbLook{250};

}  // namespace

CConnectedPrinter::CConnectedPrinter(const Place& p_objPlace, IEventLoop& p_objEventLoop,
                                     const IClock& p_objClock, IInterrupt& p_objInterrupt,
                                     ISessionEvents& p_objEvents, const CPrinterLimits& p_objLimits)
    : m_objInterrupt(p_objInterrupt)
    , m_objInterruptLoop(p_objEventLoop, p_objInterrupt)
    , m_objLoop(m_objInterruptLoop, p_objClock)
    , m_objSocket(p_objPlace.m_strHost, p_objPlace.m_iPort, Milliseconds(p_objLimits.m_dOpen))
    , m_objSerialPort(m_objLine, p_objPlace.m_objSerial)
    , m_objUsbLibrary(m_objLoop, p_objPlace.m_objUsb, {Milliseconds(p_objLimits.m_dSend), UsbLook})
    , m_objPrinter({m_objLoop,
                    {m_objLoop, p_objClock, m_objSocket, m_objSerialPort, m_objUsbLibrary},
                    p_objEvents},
                   p_objPlace.m_iInterface, p_objPlace.m_strDevice, p_objLimits) {}
