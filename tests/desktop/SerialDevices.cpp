#include <cstdlib>
#include <dlfcn.h>
#include <string>
#include <sys/stat.h>

// Preloaded into a program that opens the serial port COMn as /dev/comn: it finds the device in the
// folder that VARDEN_SERIAL_DEVICES names, whatever the system's own folder holds. So a test
// needs no right to write there, and another one beside it has ports of its own.

namespace {

const std::string Begin = "/dev/com";

/// Where the device lies.
std::string Place(const char* p_strPath) {
    const std::string strPath(p_strPath);
    const char* const strFolder = std::getenv("VARDEN_SERIAL_DEVICES");
    if (strFolder == nullptr || !strPath.starts_with(Begin)) {
        return strPath;
    }
    return strFolder + strPath.substr(Begin.rfind('/'));
}

/// The system's own function of that name.
template <typename Function>
Function* Own(const char* p_strName, Function* /*p_objThis*/) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, p_strName));
}

}  // namespace

// By these two the tool looks whether there is a device, and what its name is.
extern "C" int lstat(const char* p_strPath, struct stat* p_objStatus) noexcept {
    return Own("lstat", &lstat)(Place(p_strPath).c_str(), p_objStatus);
}

extern "C" char* realpath(const char* p_strPath, char* p_strResolved) noexcept {
    return Own("realpath", &realpath)(Place(p_strPath).c_str(), p_strResolved);
}
