#include "platform/qt/CDeviceFileParallel.h"

#include <QDeadlineTimer>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

/// Between two attempts: a device may say that it has room, and take nothing all the same.
constexpr std::chrono::milliseconds Rest{5};

/// Waits until the device takes bytes again; false when it fails or the time is over.
bool WaitForRoom(std::int32_t p_iHandle, const QDeadlineTimer& p_objDeadline) {
    std::this_thread::sleep_for(Rest);
    while (!p_objDeadline.hasExpired()) {
        pollfd objPoll{p_iHandle, POLLOUT, 0};
        const int iReady = ::poll(&objPoll, 1, static_cast<int>(p_objDeadline.remainingTime()));
        if (iReady > 0) {
            return (objPoll.revents & POLLOUT) != 0;
        }
        if (iReady == 0 || errno != EINTR) {
            return false;
        }
    }
    return false;
}

}  // namespace

CDeviceFileParallel::CDeviceFileParallel(std::string p_strFirstPort)
    : m_strFirstPort(std::move(p_strFirstPort)) {}

CDeviceFileParallel::~CDeviceFileParallel() {
    while (!m_iTimeouts.empty()) {
        DeviceClose(m_iTimeouts.begin()->first);
    }
}

std::int32_t CDeviceFileParallel::DeviceOpen(const std::string& p_strName) {
    if (p_strName != "LPT1:") {
        return NoHandle;
    }
    const std::int32_t iHandle =
        ::open(m_strFirstPort.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (iHandle < 0) {
        return NoHandle;
    }
    m_iTimeouts[iHandle] = 0;
    return iHandle;
}

void CDeviceFileParallel::DeviceTimeoutSet(std::int32_t p_iHandle, std::int32_t p_iMilliseconds) {
    const auto objOpen = m_iTimeouts.find(p_iHandle);
    if (objOpen != m_iTimeouts.end()) {
        objOpen->second = p_iMilliseconds;
    }
}

std::int32_t CDeviceFileParallel::DeviceWrite(std::int32_t p_iHandle,
                                              std::span<const std::uint8_t> p_objBytes) {
    const auto objOpen = m_iTimeouts.find(p_iHandle);
    if (objOpen == m_iTimeouts.end()) {
        return 0;
    }
    const QDeadlineTimer objDeadline(objOpen->second);
    std::span<const std::uint8_t> objRest = p_objBytes;
    while (!objRest.empty()) {
        const ssize_t iTaken = ::write(p_iHandle, objRest.data(), objRest.size());
        if (iTaken > 0) {
            objRest = objRest.subspan(static_cast<std::size_t>(iTaken));
            continue;
        }
        const bool bFull = iTaken < 0 && (errno == EAGAIN || errno == EINTR);
        if (!bFull || !WaitForRoom(p_iHandle, objDeadline)) {
            break;
        }
    }
    return static_cast<std::int32_t>(p_objBytes.size() - objRest.size());
}

void CDeviceFileParallel::DeviceClose(std::int32_t p_iHandle) {
    if (m_iTimeouts.erase(p_iHandle) > 0) {
        ::close(p_iHandle);
    }
}
