#include "platform/qt/CLinuxFileWriter.h"

#include "platform/qt/MOnDisk.h"
#include "platform/qt/MSaveName.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace {

constexpr mode_t Permissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t OfAnyFile = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
constexpr mode_t OwnersAlone = S_IRUSR | S_IWUSR;
constexpr auto AsItIs = static_cast<uid_t>(-1);

/// The path behind links, or the last of them when they lead in a circle.
std::filesystem::path WithoutLinks(std::filesystem::path p_objPath) {
    constexpr int iMostLinks = 40;  // as many as the system itself follows
    for (int i = 0; i < iMostLinks; ++i) {
        std::error_code objError;
        const auto objTarget = std::filesystem::read_symlink(p_objPath, objError);
        if (objError) {
            break;
        }
        p_objPath = p_objPath.parent_path() / objTarget;
    }
    return p_objPath;
}

/// Gives an open file to a user (or AsItIs) and a group.
bool GiveTo(int p_iFile, uid_t p_iUser, gid_t p_iGroup) {
    return ::fchown(p_iFile, p_iUser, p_iGroup) == 0;
}

/// Where the system shows an open file.
std::string ShownAt(int p_iFile) {
    return "/proc/self/fd/" + std::to_string(p_iFile);
}

}  // namespace

CLinuxFileWriter::~CLinuxFileWriter() {
    const bool bNamed = !m_strName.empty() &&
                        MSaveName::IsNameOf(m_objFolder.Number(), m_strName, m_objFile.Number());
    if (bNamed) {
        ::unlinkat(m_objFolder.Number(), m_strName.c_str(), 0);
    }
}

bool CLinuxFileWriter::Open(const std::string& p_strPath) {
    const std::filesystem::path objPath =
        m_iReaders == Readers::Owner ? std::filesystem::path(p_strPath) : WithoutLinks(p_strPath);
    const std::filesystem::path objFolder = objPath.parent_path();
    m_strTarget = objPath.filename().string();
    m_objFolder = CFileHandle(
        ::open(objFolder.empty() ? "." : objFolder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return !m_strTarget.empty() && m_objFolder.IsOpen() && LookAtTarget() &&
           (OpenWithoutName() || OpenWithName());
}

bool CLinuxFileWriter::LookAtTarget() {
    const int iFolder = m_objFolder.Number();
    struct stat objOld = {};
    if (::fstatat(iFolder, m_strTarget.c_str(), &objOld, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT;
    }
    m_objOld = objOld;
    return S_ISREG(objOld.st_mode) && ::faccessat(iFolder, m_strTarget.c_str(), W_OK, 0) == 0;
}

mode_t CLinuxFileWriter::FirstMode() const {
    return m_objOld || m_iReaders == Readers::Owner ? OwnersAlone : OfAnyFile;
}

bool CLinuxFileWriter::OpenWithoutName() {
    m_objFile = CFileHandle(
        ::openat(m_objFolder.Number(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, FirstMode()));
    // It could not get a name later if the system did not show it.
    return m_objFile.IsOpen() && ::access(ShownAt(m_objFile.Number()).c_str(), F_OK) == 0 &&
           MSaveName::Lock(m_objFile.Number());
}

bool CLinuxFileWriter::OpenWithName() {
    for (int i = 0; i < MSaveName::Count; ++i) {
        const std::string strName = MSaveName::Of(m_strTarget, i);
        MSaveName::RemoveLeftOver(m_objFolder.Number(), strName);
        m_objFile = CFileHandle(::openat(m_objFolder.Number(), strName.c_str(),
                                         O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, FirstMode()));
        if (!m_objFile.IsOpen() && errno != EEXIST) {
            return false;
        }
        // Until it was locked, another save may have taken it for left, and removed it.
        if (m_objFile.IsOpen() && MSaveName::Lock(m_objFile.Number()) &&
            MSaveName::IsNameOf(m_objFolder.Number(), strName, m_objFile.Number())) {
            m_strName = strName;
            return true;
        }
    }
    return false;
}

bool CLinuxFileWriter::Write(std::string_view p_strBytes) {
    while (!p_strBytes.empty() && !m_bFailed) {
        const ssize_t iCount = ::write(m_objFile.Number(), p_strBytes.data(), p_strBytes.size());
        if (iCount > 0) {
            p_strBytes.remove_prefix(static_cast<std::size_t>(iCount));
        } else {
            m_bFailed = iCount == 0 || errno != EINTR;
        }
    }
    return !m_bFailed;
}

bool CLinuxFileWriter::Commit() {
    if (m_bFailed) {
        return false;
    }
    TakeOverOwner();
    if (!MOnDisk::Wait(m_objFile.Number())) {
        return false;
    }
    RemoveLeftOvers();
    if (!PutInPlace()) {
        return false;
    }
    m_bInPlace = MOnDisk::WaitForFolder(m_objFolder.Number());
    return true;
}

void CLinuxFileWriter::TakeOverOwner() const {
    if (!m_objOld || m_iReaders == Readers::Owner) {
        return;
    }
    const int iFile = m_objFile.Number();
    // Only the administrator may give a file away, but its group may be one of the user's own.
    // None of this is worth a failure: some file systems have neither owners nor permissions.
    mode_t iMode = m_objOld->st_mode & Permissions;
    if (!GiveTo(iFile, m_objOld->st_uid, m_objOld->st_gid) &&
        !GiveTo(iFile, AsItIs, m_objOld->st_gid)) {
        // Another group stands in the place of the old one: it may do no more than anybody may.
        constexpr int iGroupFromOthers = 3;
        iMode &= ~static_cast<mode_t>(S_IRWXG) | ((iMode & S_IRWXO) << iGroupFromOthers);
    }
    ::fchmod(iFile, iMode);
}

void CLinuxFileWriter::RemoveLeftOvers() const {
    for (int i = 0; i < MSaveName::Count; ++i) {
        const std::string strName = MSaveName::Of(m_strTarget, i);
        if (strName != m_strName) {
            MSaveName::RemoveLeftOver(m_objFolder.Number(), strName);
        }
    }
}

bool CLinuxFileWriter::PutInPlace() {
    if (!m_strName.empty()) {
        return Rename();
    }
    if (GiveName(m_strTarget)) {
        return true;
    }
    // A name is never given over another file's: that takes a rename.
    for (int i = 0; errno == EEXIST && i < MSaveName::Count; ++i) {
        const std::string strName = MSaveName::Of(m_strTarget, i);
        if (GiveName(strName)) {
            m_strName = strName;
            return Rename();
        }
    }
    return false;
}

bool CLinuxFileWriter::GiveName(const std::string& p_strName) const {
    return ::linkat(AT_FDCWD, ShownAt(m_objFile.Number()).c_str(), m_objFolder.Number(),
                    p_strName.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool CLinuxFileWriter::Rename() {
    const int iFolder = m_objFolder.Number();
    if (::renameat(iFolder, m_strName.c_str(), iFolder, m_strTarget.c_str()) != 0) {
        return false;
    }
    m_strName.clear();
    return true;
}
