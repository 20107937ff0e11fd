#include "platform/qt/MSerialPortName.h"

#include <array>
#include <filesystem>
#include <system_error>

namespace MSerialPortName {

#ifdef _WIN32

std::string DeviceOf(std::int16_t p_iPort, const std::string& /*p_strFolder*/) {
    return p_iPort > 0 ? "COM" + std::to_string(p_iPort) : std::string();
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

#endif

}  // namespace MSerialPortName
