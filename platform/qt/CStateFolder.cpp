#include "platform/qt/CStateFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#ifdef __linux__
#include "platform/qt/CLinuxFileWriter.h"
#include "platform/qt/CStateLock.h"
#include "platform/qt/MOnDisk.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#else
#include "platform/qt/CQtFileWriter.h"
#include "platform/qt/CQtStateLock.h"

#include <QStandardPaths>
#endif

namespace fs = std::filesystem;

namespace {

/// True for what is there and no plain file.
bool IsInTheWay(const std::string& p_strPath) {
    std::error_code objError;
    const fs::file_type iType = fs::symlink_status(p_strPath, objError).type();
    return iType != fs::file_type::regular && iType != fs::file_type::not_found;
}

#ifdef __linux__
using CLock = CStateLock;

bool SyncFolder(const fs::path& p_objFolder) {
    const CFileHandle objFolder(::open(p_objFolder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return objFolder.IsOpen() && MOnDisk::WaitForFolder(objFolder.Number());
}

/// Makes a folder and its parents where they are missing. Each stands safely in its own parent:
/// a file in a folder that a power cut takes away would be no safer than one that was never
/// written.
bool MakeFolder(const fs::path& p_objFolder) {
    std::error_code objError;
    if (fs::is_directory(p_objFolder, objError)) {
        return true;
    }
    const fs::path objParent = p_objFolder.parent_path();
    if (objParent == p_objFolder || !MakeFolder(objParent)) {
        return false;
    }
    const bool bMade = ::mkdir(p_objFolder.c_str(), S_IRWXU) == 0 || errno == EEXIST;
    return bMade && SyncFolder(objParent) && fs::is_directory(p_objFolder, objError);
}

bool Put(const std::string& p_strPath, const std::string& p_strBytes) {
    CLinuxFileWriter objWriter(CLinuxFileWriter::Readers::Owner);
    return objWriter.Open(p_strPath) && objWriter.Write(p_strBytes) && objWriter.Commit() &&
           objWriter.IsInPlace();
}

bool Delete(const std::string& p_strPath) {
    return ::unlink(p_strPath.c_str()) == 0 || errno == ENOENT;
}

std::string Home() {
    const char* const strHome = std::getenv("HOME");
    if (strHome != nullptr && *strHome != '\0') {
        return strHome;
    }
    const passwd* const objUser = ::getpwuid(::getuid());  // a service may have no HOME
    return objUser != nullptr && objUser->pw_dir != nullptr ? objUser->pw_dir : "";
}

std::string StatePlace() {
    const char* const strState = std::getenv("XDG_STATE_HOME");
    if (strState != nullptr && fs::path(strState).is_absolute()) {
        return strState;
    }
    const std::string strHome = Home();
    return strHome.empty() ? "" : strHome + "/.local/state";
}
#else
using CLock = CQtStateLock;

bool SyncFolder(const fs::path& /*p_objFolder*/) {
    return true;  // the toolkit has no such thing
}

bool MakeFolder(const fs::path& p_objFolder) {
    std::error_code objError;
    if (fs::create_directories(p_objFolder, objError)) {
        fs::permissions(p_objFolder, fs::perms::owner_all, objError);
    }
    return fs::is_directory(p_objFolder, objError);
}

bool Put(const std::string& p_strPath, const std::string& p_strBytes) {
    constexpr auto OwnersAlone = fs::perms::owner_read | fs::perms::owner_write;
    CQtFileWriter objWriter;
    std::error_code objError;
    const bool bWritten = !IsInTheWay(p_strPath) && objWriter.Open(p_strPath) &&
                          objWriter.Write(p_strBytes) && objWriter.Commit();
    fs::permissions(p_strPath, OwnersAlone, objError);
    return bWritten;
}

bool Delete(const std::string& p_strPath) {
    std::error_code objError;
    fs::remove(p_strPath, objError);
    return !objError;
}

std::string StatePlace() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString();
}
#endif

bool IsNameCharacter(char p_cLetter) {
    constexpr std::string_view strLetters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.-_";
    return strLetters.find(p_cLetter) != std::string_view::npos;
}

}  // namespace

CStateFolder::CStateFolder(const std::string& p_strFolder) {
    if (!p_strFolder.empty()) {
        std::error_code objError;
        const fs::path objFolder = fs::absolute(p_strFolder, objError);
        // What ends with "/" has an empty last part, which would pass for a folder to make.
        m_strFolder = (objFolder.has_filename() ? objFolder : objFolder.parent_path()).string();
    }
}

std::string CStateFolder::Default() {
    const std::string strPlace = StatePlace();
    return strPlace.empty() ? "" : strPlace + "/varden";
}

bool CStateFolder::IsGood(const std::string& p_strName) const {
    return !m_strFolder.empty() && !p_strName.empty() && p_strName.front() != '.' &&
           std::ranges::all_of(p_strName, &IsNameCharacter);
}

std::unique_ptr<IStateStore::ILock> CStateFolder::Lock(const std::string& p_strName,
                                                       const std::string& p_strHolder,
                                                       std::string& p_strWhy, bool& p_bHeld) {
    p_bHeld = false;
    if (!IsGood(p_strName)) {
        p_strWhy = "\"" + p_strName + "\" is no name of a lock";
        return nullptr;
    }
    if (!MakeFolder(m_strFolder)) {
        p_strWhy = "the folder " + m_strFolder + " cannot be made";
        return nullptr;
    }
    auto objLock = std::make_unique<CLock>();
    if (!objLock->Take(Path(p_strName) + ".lock", p_strHolder, p_strWhy, p_bHeld)) {
        return nullptr;
    }
    return objLock;
}

bool CStateFolder::Write(const std::string& p_strName, const std::string& p_strBytes) {
    return IsGood(p_strName) && p_strBytes.size() <= MostBytes && MakeFolder(m_strFolder) &&
           Put(Path(p_strName), p_strBytes);
}

std::optional<std::string> CStateFolder::Read(const std::string& p_strName) const {
    std::error_code objError;
    const std::string strPath = Path(p_strName);
    if (!IsGood(p_strName) || !fs::is_regular_file(fs::symlink_status(strPath, objError))) {
        return std::nullopt;
    }
    std::ifstream objFile(strPath, std::ios::binary);
    std::string strBytes(MostBytes + 1, '\0');
    objFile.read(strBytes.data(), static_cast<std::streamsize>(strBytes.size()));
    strBytes.resize(static_cast<std::size_t>(objFile.gcount()));
    if (!objFile.is_open() || objFile.bad() || strBytes.size() > MostBytes) {
        return std::nullopt;
    }
    return strBytes;
}

bool CStateFolder::Stands(const std::string& p_strName) const {
    std::error_code objError;
    const auto objStatus = std::filesystem::symlink_status(Path(p_strName), objError);
    return IsGood(p_strName) && objStatus.type() != std::filesystem::file_type::not_found;
}

bool CStateFolder::Remove(const std::string& p_strName) {
    const std::string strPath = Path(p_strName);
    std::error_code objError;
    if (!IsGood(p_strName) || IsInTheWay(strPath)) {
        return false;
    }
    if (!fs::is_directory(m_strFolder, objError)) {
        return true;
    }
    // Also where none is there any more: a removal before may have been killed before its folder
    // was safe.
    return Delete(strPath) && SyncFolder(m_strFolder);
}

std::vector<std::string> CStateFolder::Names(const std::string& p_strEnd) const {
    std::vector<std::string> strNames;
    std::error_code objError;
    for (fs::directory_iterator objEntry(m_strFolder, objError), objEnd;
         !objError && objEntry != objEnd; objEntry.increment(objError)) {
        const std::string strName = objEntry->path().filename().string();
        std::error_code objNone;
        if (IsGood(strName) && strName.ends_with(p_strEnd) &&
            fs::is_regular_file(objEntry->symlink_status(objNone))) {
            strNames.push_back(strName);
        }
    }
    std::ranges::sort(strNames);
    return strNames;
}

std::string CStateFolder::Path(const std::string& p_strName) const {
    return m_strFolder + "/" + p_strName;
}
