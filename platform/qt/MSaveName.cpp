#include "platform/qt/MSaveName.h"

#include "platform/qt/CFileHandle.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>

namespace {

/// Sixteen digits that are the same whenever the text is (FNV-1a).
std::string Digits(const std::string& p_strText) {
    constexpr std::uint64_t iBegin = 0xCBF29CE484222325U;
    constexpr std::uint64_t iFactor = 0x100000001B3U;
    constexpr unsigned iDigitBits = 4;
    std::uint64_t iHash = iBegin;
    for (const char cByte : p_strText) {
        iHash = (iHash ^ static_cast<unsigned char>(cByte)) * iFactor;
    }
    std::string strDigits(sizeof iHash * 2, '0');
    for (char& cDigit : strDigits) {
        cDigit = "0123456789abcdef"[iHash % (1U << iDigitBits)];
        iHash >>= iDigitBits;
    }
    return strDigits;
}

/// True for a plain file without a second name.
bool IsPlain(int p_iFile) {
    struct stat objFile = {};
    return ::fstat(p_iFile, &objFile) == 0 && S_ISREG(objFile.st_mode) && objFile.st_nlink == 1;
}

}  // namespace

namespace MSaveName {

std::string Of(const std::string& p_strTarget, int p_iNumber) {
    return ".varden-save-" + Digits(p_strTarget) + "-" + std::to_string(p_iNumber) + ".tmp";
}

bool Lock(int p_iFile) {
    return ::flock(p_iFile, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool IsNameOf(int p_iFolder, const std::string& p_strName, int p_iFile) {
    struct stat objNamed = {};
    struct stat objFile = {};
    return ::fstatat(p_iFolder, p_strName.c_str(), &objNamed, AT_SYMLINK_NOFOLLOW) == 0 &&
           ::fstat(p_iFile, &objFile) == 0 && objNamed.st_dev == objFile.st_dev &&
           objNamed.st_ino == objFile.st_ino;
}

void RemoveLeftOver(int p_iFolder, const std::string& p_strName) {
    // To write: some file systems lock nothing that is only read.
    const CFileHandle objFile(::openat(p_iFolder, p_strName.c_str(),
                                       O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    // Looked at again once it is locked: by then another save may have removed it and made its own.
    if (objFile.IsOpen() && IsPlain(objFile.Number()) &&
        ::flock(objFile.Number(), LOCK_EX | LOCK_NB) == 0 &&
        IsNameOf(p_iFolder, p_strName, objFile.Number())) {
        ::unlinkat(p_iFolder, p_strName.c_str(), 0);
    }
}

}  // namespace MSaveName
