#include "tests/kernel/CVirtualPort.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace {

namespace fs = std::filesystem;
using std::chrono::steady_clock;

constexpr const char* Controller = "/sys/devices/platform/vhci_hcd.0";
constexpr const char* Devices = "/sys/bus/usb/devices/";
constexpr std::chrono::seconds Limit{10};
constexpr std::chrono::milliseconds Slice{2};

bool WaitUntil(const std::function<bool()>& p_fnCondition) {
    const auto objEnd = steady_clock::now() + Limit;
    while (!p_fnCondition()) {
        if (steady_clock::now() > objEnd) {
            return false;
        }
        std::this_thread::sleep_for(Slice);
    }
    return true;
}

// In one write, as the kernel wants it; its answer is the write's result.
int WriteAttribute(const std::string& p_strPath, const std::string& p_strText) {
    const int iFile = ::open(p_strPath.c_str(), O_WRONLY | O_CLOEXEC);
    if (iFile < 0) {
        return errno;
    }
    const int iError = ::write(iFile, p_strText.data(), p_strText.size()) < 0 ? errno : 0;
    ::close(iFile);
    return iError;
}

std::string FirstLine(const fs::path& p_objPath) {
    std::ifstream objFile(p_objPath);
    std::string strLine;
    std::getline(objFile, strLine);
    return strLine;
}

// The controller has a bus for each speed; this is the number of the one for high speed.
std::string HighSpeedBus() {
    for (const auto& objEntry : fs::directory_iterator(Controller)) {
        const std::string strName = objEntry.path().filename();
        if (strName.starts_with("usb") && FirstLine(objEntry.path() / "speed") == "480") {
            return FirstLine(objEntry.path() / "busnum");
        }
    }
    throw std::runtime_error("the virtual controller has no high-speed bus");
}

}  // namespace

CVirtualPort::CVirtualPort(int p_iPort)
    : m_iPort(p_iPort)
    , m_strDevice(HighSpeedBus() + "-" + std::to_string(p_iPort + 1)) {}

void CVirtualPort::Attach(int p_iSocket) {
    constexpr int iHighSpeed = 3;
    constexpr int iRemoteBus = 0x10000;
    std::ostringstream objText;
    // The device's number on its own, imagined bus is never 0.
    objText << m_iPort << ' ' << p_iSocket << ' ' << iRemoteBus + m_iPort + 1 << ' ' << iHighSpeed;
    if (const int iError = WriteAttribute(std::string(Controller) + "/attach", objText.str())) {
        throw std::runtime_error(std::string("the kernel refuses the device: ") +
                                 std::strerror(iError));
    }
    // Interfaces come into being with the configuration; interface 0 is always there.
    if (!WaitUntil(
            [&] { return fs::exists(Devices + m_strDevice + "/" + m_strDevice + ":1.0"); })) {
        throw std::runtime_error("the kernel does not see the device");
    }
}

void CVirtualPort::Detach() const {
    // Refused when nothing is there, which is what is wanted.
    WriteAttribute(std::string(Controller) + "/detach", std::to_string(m_iPort));
}

bool CVirtualPort::IsEmpty() const {
    // "hs  0000 004 ...": the hub, the port, and its state, of which 4 is an empty port.
    constexpr int iEmpty = 4;
    std::ifstream objFile(std::string(Controller) + "/status");
    std::string strLine;
    while (std::getline(objFile, strLine)) {
        std::istringstream objLine(strLine);
        std::string strHub;
        int iPort = 0;
        int iState = 0;
        if (objLine >> strHub >> iPort >> iState && strHub == "hs" && iPort == m_iPort) {
            return iState == iEmpty && !fs::exists(Devices + m_strDevice);
        }
    }
    return false;
}

bool CVirtualPort::WaitUntilEmpty() const {
    return WaitUntil([&] { return IsEmpty(); });
}

std::string CVirtualPort::Driver(int p_iInterface) const {
    std::error_code objError;
    const fs::path objLink = fs::read_symlink(
        Devices + m_strDevice + ":1." + std::to_string(p_iInterface) + "/driver", objError);
    return objError ? std::string() : objLink.filename().string();
}

bool CVirtualPort::WaitForDriver(int p_iInterface, const std::string& p_strDriver) const {
    return WaitUntil([&] { return Driver(p_iInterface) == p_strDriver; });
}

std::string CVirtualPort::Attribute(const std::string& p_strName) const {
    return FirstLine(Devices + m_strDevice + "/" + p_strName);
}

std::string CVirtualPort::Node() const {
    constexpr std::size_t iDigits = 3;
    const auto fnPadded = [&](const std::string& p_strNumber) {
        return std::string(iDigits - std::min(iDigits, p_strNumber.size()), '0') + p_strNumber;
    };
    return "/dev/bus/usb/" + fnPadded(Attribute("busnum")) + "/" + fnPadded(Attribute("devnum"));
}
