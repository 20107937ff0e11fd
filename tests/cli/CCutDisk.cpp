#include "tests/cli/CCutDisk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Where a call has its paths: each begins at the folder that the argument before stands for.
struct Paths {
    long m_iCall;
    std::vector<std::size_t> m_iRelative;
    std::vector<std::size_t> m_iPlain = {};  ///< those that have none
};

const std::vector<Paths>& PathsOfCalls() {
    static const std::vector<Paths> objRows{
        {SYS_openat, {1}},      {SYS_mkdirat, {1}},       {SYS_unlinkat, {1}},
        {SYS_linkat, {1, 3}},   {SYS_renameat, {1, 3}},   {SYS_renameat2, {1, 3}},
#ifdef SYS_rename
        {SYS_open, {}, {0}},    {SYS_mkdir, {}, {0}},     {SYS_unlink, {}, {0}},
        {SYS_link, {}, {0, 1}}, {SYS_rename, {}, {0, 1}},
#endif
    };
    return objRows;
}

struct stat StatusOf(const std::string& p_strPath) {
    struct stat objStatus = {};
    ::stat(p_strPath.c_str(), &objStatus);
    return objStatus;
}

std::string BytesOf(const std::string& p_strPath) {
    std::ifstream objFile(p_strPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(objFile), {}};
}

}  // namespace

CCutDisk::CCutDisk(std::string p_strFolder)
    : m_strFolder(std::move(p_strFolder))
    , m_iFolder(StatusOf(m_strFolder).st_ino)
    , m_objSafe(Look()) {}

bool CCutDisk::IsInside(const std::string& p_strPath) const {
    return p_strPath == m_strFolder || p_strPath.starts_with(m_strFolder + "/");
}

bool CCutDisk::Concerns(const CSteppedProcess::Call& p_objCall) const {
    for (const Paths& objRow : PathsOfCalls()) {
        if (objRow.m_iCall != p_objCall.m_iNumber) {
            continue;
        }
        for (const std::size_t iPath : objRow.m_iRelative) {
            const fs::path objPath = p_objCall.TextOf(iPath);
            if (IsInside((fs::path(p_objCall.FileOf(iPath - 1)) / objPath).string())) {
                return true;
            }
        }
        for (const std::size_t iPath : objRow.m_iPlain) {
            if (IsInside(p_objCall.TextOf(iPath))) {
                return true;
            }
        }
        return false;
    }
    return IsInside(p_objCall.m_strFile);
}

bool CCutDisk::Hear(const CSteppedProcess::Call& p_objCall) {
    Settle();
    if (!Concerns(p_objCall)) {
        return false;
    }
    const bool bSync = p_objCall.m_iNumber == SYS_fsync || p_objCall.m_iNumber == SYS_fdatasync;
    if (bSync) {
        const std::string strFile = "/proc/" + std::to_string(p_objCall.m_iProcess) + "/fd/" +
                                    std::to_string(p_objCall.m_iArguments[0]);
        const struct stat objStatus = StatusOf(strFile);
        if (S_ISDIR(objStatus.st_mode)) {
            m_fnSettle = [this, iFolder = objStatus.st_ino, objNow = Look()] {
                m_objSafe.m_objFolders[iFolder] = objNow.m_objFolders.at(iFolder);
            };
        } else {
            Hold(objStatus.st_ino, strFile);
            m_fnSettle = [this, iFile = objStatus.st_ino, strBytes = BytesOf(strFile)] {
                m_objSafe.m_strFiles[iFile] = strBytes;
            };
        }
    }
    return true;
}

void CCutDisk::Settle() {
    if (const auto fnSettle = std::exchange(m_fnSettle, nullptr)) {
        fnSettle();
    }
}

CCutDisk::Tree CCutDisk::Look() {
    Tree objTree;
    LookInto(m_strFolder, objTree);
    return objTree;
}

void CCutDisk::LookInto(const std::string& p_strFolder, Tree& p_objTree) {
    Entries objEntries;
    for (const auto& objEntry : fs::directory_iterator(p_strFolder)) {
        const std::string strPath = objEntry.path().string();
        const struct stat objStatus = StatusOf(strPath);
        objEntries[objEntry.path().filename().string()] = objStatus.st_ino;
        Hold(objStatus.st_ino, strPath);
        if (S_ISDIR(objStatus.st_mode)) {
            LookInto(strPath, p_objTree);
        } else {
            p_objTree.m_strFiles[objStatus.st_ino] = BytesOf(strPath);
        }
    }
    p_objTree.m_objFolders[StatusOf(p_strFolder).st_ino] = objEntries;
}

void CCutDisk::Hold(ino_t p_iEntry, const std::string& p_strPath) {
    if (!m_objHeld.contains(p_iEntry)) {
        m_objHeld.emplace(p_iEntry, ::open(p_strPath.c_str(), O_PATH | O_CLOEXEC));
    }
}

void CCutDisk::Cut(Names p_iNames) {
    m_fnSettle = nullptr;  // the power has gone before that call was done
    const Tree objNow = Look();
    for (const auto& objEntry : fs::directory_iterator(m_strFolder)) {
        fs::remove_all(objEntry.path());
    }
    Build(m_strFolder, m_iFolder, p_iNames == Names::Lost ? m_objSafe : objNow, objNow);
}

void CCutDisk::Build(const std::string& p_strFolder, ino_t p_iFolder, const Tree& p_objNames,
                     const Tree& p_objNow) const {
    const auto objEntries = p_objNames.m_objFolders.find(p_iFolder);
    if (objEntries == p_objNames.m_objFolders.end()) {
        return;  // a folder none of whose names is safe
    }
    for (const auto& [strName, iEntry] : objEntries->second) {
        const std::string strPath = p_strFolder + "/" + strName;
        const bool bFolder =
            p_objNow.m_objFolders.contains(iEntry) || m_objSafe.m_objFolders.contains(iEntry);
        if (bFolder) {
            fs::create_directory(strPath);
            fs::permissions(strPath, fs::perms::owner_all);
            Build(strPath, iEntry, p_objNames, p_objNow);
            continue;
        }
        const auto objSafe = m_objSafe.m_strFiles.find(iEntry);
        const auto objBytes = p_objNow.m_strFiles.find(iEntry);
        const bool bSafe =
            objSafe != m_objSafe.m_strFiles.end() &&
            (objBytes == p_objNow.m_strFiles.end() || objBytes->second == objSafe->second);
        std::ofstream(strPath, std::ios::binary) << (bSafe ? objSafe->second : "");
        fs::permissions(strPath, fs::perms::owner_read | fs::perms::owner_write);
    }
}
