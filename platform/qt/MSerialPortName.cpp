#include "platform/qt/MSerialPortName.h"

#include <array>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace {

/// The n of COMn; 0 for any other name.
std::int16_t ComNumber(std::string_view p_strName) {
    constexpr std::string_view strCom = "COM";
    for (const char cLetter : strCom) {
        if (p_strName.empty() ||
            std::toupper(static_cast<unsigned char>(p_strName.front())) != cLetter) {
            return 0;
        }
        p_strName.remove_prefix(1);
    }
    std::int16_t iNumber = 0;
    const char* const strEnd = p_strName.data() + p_strName.size();
    const auto objRead = std::from_chars(p_strName.data(), strEnd, iNumber);
    return objRead.ec == std::errc() && objRead.ptr == strEnd && iNumber > 0 ? iNumber
                                                                             : std::int16_t{0};
}

}  // namespace

namespace MSerialPortName {

#ifdef _WIN32

std::string DeviceOf(std::int16_t p_iPort, const std::string& /*p_strFolder*/) {
    return p_iPort > 0 ? "COM" + std::to_string(p_iPort) : std::string();
}

std::string DeviceNamed(const std::string& p_strName, const std::string& p_strFolder) {
    const std::int16_t iNumber = ComNumber(p_strName);
    return iNumber > 0 ? DeviceOf(iNumber, p_strFolder) : p_strName;
}

#else

std::string DeviceOf(std::int16_t p_iPort, const std::string& p_strFolder) {
    if (p_iPort < 1) {
        return {};
    }
    const std::string strIndex = std::to_string(p_iPort - 1);
    const std::array<std::string, 4> strNames{"com" + std::to_string(p_iPort), "ttyUSB" + strIndex,
                                              "ttyACM" + strIndex, "ttyS" + strIndex};
    for (const std::string& strName : strNames) {
        const std::filesystem::path objPath = std::filesystem::path(p_strFolder) / strName;
        std::error_code objError;
        if (std::filesystem::exists(std::filesystem::symlink_status(objPath, objError))) {
            return objPath.string();
        }
    }
    return {};
}

std::string DeviceNamed(const std::string& p_strName, const std::string& p_strFolder) {
    if (p_strName.find('/') != std::string::npos) {
        return p_strName;
    }
    const std::int16_t iNumber = ComNumber(p_strName);
    return iNumber > 0 ? DeviceOf(iNumber, p_strFolder)
                       : (std::filesystem::path(p_strFolder) / p_strName).string();
}

#endif

}  // namespace MSerialPortName
