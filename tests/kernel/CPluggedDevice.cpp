#include "tests/kernel/CPluggedDevice.h"

#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

CPluggedDevice::CPluggedDevice(const CDeviceSettings& p_objSettings, int p_iPort)
    : m_objPort(p_iPort) {
    int arrSockets[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, arrSockets) != 0) {
        throw std::runtime_error("no pair of sockets");
    }
    m_objDevice.emplace(p_objSettings, arrSockets[0], [this] { m_objPort.Detach(); });
    try {
        m_objPort.Attach(arrSockets[1]);
    } catch (...) {
        ::close(arrSockets[1]);
        throw;
    }
    ::close(arrSockets[1]);
    if (p_objSettings.m_bPrinter &&
        !m_objPort.WaitForDriver(p_objSettings.m_iPrinterInterface, "usblp")) {
        throw std::runtime_error("usblp does not take the device");
    }
}

// A port that stays taken makes the next Attach fail.
CPluggedDevice::~CPluggedDevice() {
    static_cast<void>(Unplug());
    m_objDevice.reset();
}

bool CPluggedDevice::Unplug() {
    m_objPort.Detach();
    return m_objPort.WaitUntilEmpty();
}
