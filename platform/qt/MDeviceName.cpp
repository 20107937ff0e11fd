#include "platform/qt/MDeviceName.h"

#include <filesystem>
#include <system_error>

namespace MDeviceName {

#ifdef _WIN32

std::string OwnName(const std::string& p_strDevice) {
    return p_strDevice;
}

#else

std::string OwnName(const std::string& p_strDevice) {
    namespace fs = std::filesystem;
    constexpr int iMostLinks = 40;
    fs::path objDevice(p_strDevice);
    std::error_code objError;
    for (int i = 0; i < iMostLinks; ++i) {
        const fs::file_type iType = fs::symlink_status(objDevice, objError).type();
        if (iType != fs::file_type::symlink) {
            const bool bThere = iType != fs::file_type::not_found && iType != fs::file_type::none;
            return bThere ? objDevice.string() : std::string();
        }
        const fs::path objTarget = fs::read_symlink(objDevice, objError);
        objDevice = (objDevice.parent_path() / objTarget).lexically_normal();
    }
    return {};
}

#endif

}  // namespace MDeviceName
