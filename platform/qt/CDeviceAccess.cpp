#include "platform/qt/CDeviceAccess.h"

#include "platform/qt/MDeviceName.h"

#include <utility>

#ifndef _WIN32

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#endif

CDeviceAccess::CDeviceAccess(std::vector<std::string> p_strLockFolders)
    : m_strLockFolders(std::move(p_strLockFolders)) {}

#ifdef _WIN32

std::vector<std::string> CDeviceAccess::LockFolders() {
    return {};
}

CDeviceState CDeviceAccess::Look(const std::string& /*p_strDevice*/) const {
    return {};
}

std::string CDeviceAccess::HolderByLock(const std::string& /*p_strDevice*/) const {
    return {};
}

#else

namespace {

namespace fs = std::filesystem;

constexpr const char* Processes = "/proc";

/// Tells which group would let this user in.
void FindGroup(const struct stat& p_objStatus, CDeviceState& p_objState) {
    constexpr unsigned iBoth = S_IRGRP | S_IWGRP;
    // Nobody is put into the administrator's own group for a printer.
    const group* const objGroup = p_objStatus.st_gid != 0 && (p_objStatus.st_mode & iBoth) == iBoth
                                      ? ::getgrgid(p_objStatus.st_gid)
                                      : nullptr;
    if (objGroup == nullptr) {
        return;
    }
    p_objState.m_strGroup = objGroup->gr_name;
    const passwd* const objUser = ::getpwuid(::getuid());
    const std::string strUser = objUser != nullptr ? objUser->pw_name : "";
    for (char** strMember = objGroup->gr_mem; *strMember != nullptr; ++strMember) {
        p_objState.m_bMember = p_objState.m_bMember || strUser == *strMember;
    }
}

/// A process as people know it; what is known of it is its number at least.
std::string ProcessText(const std::string& p_strNumber) {
    std::ifstream objName(fs::path(Processes) / p_strNumber / "comm");
    std::string strName;
    std::getline(objName, strName);
    return strName.empty() ? "process " + p_strNumber : strName + " (" + p_strNumber + ")";
}

bool HasOpen(const fs::path& p_objProcess, const fs::path& p_objDevice) {
    std::error_code objError;
    for (fs::directory_iterator objFiles(p_objProcess / "fd", objError), objEnd;
         !objError && objFiles != objEnd; objFiles.increment(objError)) {
        std::error_code objGone;
        if (fs::read_symlink(objFiles->path(), objGone) == p_objDevice) {
            return true;
        }
    }
    return false;
}

/// The first process that has the device open, among those that this user may look at.
std::string HolderByFile(const fs::path& p_objDevice) {
    std::error_code objError;
    for (fs::directory_iterator objProcesses(Processes, objError), objEnd;
         !objError && objProcesses != objEnd; objProcesses.increment(objError)) {
        const std::string strNumber = objProcesses->path().filename().string();
        const bool bProcess = std::ranges::all_of(
            strNumber, [](unsigned char p_c) { return std::isdigit(p_c) != 0; });
        if (bProcess && HasOpen(objProcesses->path(), p_objDevice)) {
            return ProcessText(strNumber);
        }
    }
    return {};
}

}  // namespace

std::vector<std::string> CDeviceAccess::LockFolders() {
    return {"/var/lock", "/etc/locks", "/var/spool/locks",  "/var/spool/uucp",
            "/tmp",      "/var/tmp",   "/var/lock/lockdev", "/run/lock"};
}

CDeviceState CDeviceAccess::Look(const std::string& p_strDevice) const {
    CDeviceState objState;
    struct stat objStatus {};
    if (::stat(p_strDevice.c_str(), &objStatus) != 0) {
        objState.m_iUse =
            errno == EACCES ? CDeviceState::Use::Forbidden : CDeviceState::Use::Missing;
        return objState;
    }
    if (::access(p_strDevice.c_str(), R_OK | W_OK) != 0) {
        objState.m_iUse = CDeviceState::Use::Forbidden;
        FindGroup(objStatus, objState);
        return objState;
    }
    const std::string strDevice = MDeviceName::OwnName(p_strDevice);
    objState.m_strHolder = HolderByLock(strDevice);
    if (objState.m_strHolder.empty()) {
        objState.m_strHolder = HolderByFile(strDevice);
    }
    if (!objState.m_strHolder.empty()) {
        objState.m_iUse = CDeviceState::Use::Held;
    }
    return objState;
}

std::string CDeviceAccess::HolderByLock(const std::string& p_strDevice) const {
    const std::string strLock = "LCK.." + fs::path(p_strDevice).filename().string();
    for (const std::string& strFolder : m_strLockFolders) {
        std::ifstream objLock(fs::path(strFolder) / strLock);
        pid_t iProcess = 0;
        // A lock outlives a program that has crashed, and holds nothing then.
        if (objLock >> iProcess && iProcess > 0 && (::kill(iProcess, 0) == 0 || errno == EPERM)) {
            return ProcessText(std::to_string(iProcess));
        }
    }
    return {};
}

#endif
