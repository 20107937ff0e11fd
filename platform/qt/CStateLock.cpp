#include "platform/qt/CStateLock.h"

#include "platform/qt/MSaveName.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace {

std::string SystemWords() {
    return std::generic_category().message(errno);
}

/// What stands in a lock's file: its holder's line.
std::string HolderIn(int p_iFile) {
    std::array<char, 512> cBytes{};
    const ssize_t iCount = ::pread(p_iFile, cBytes.data(), cBytes.size(), 0);
    const std::string strLine(cBytes.data(), iCount > 0 ? static_cast<std::size_t>(iCount) : 0);
    // It has none yet when it was taken this very moment.
    return iCount > 0 ? strLine.substr(0, strLine.find('\n')) : "another program";
}

/// Others are told no more than that somebody has it where this fails.
void WriteHolder(int p_iFile, const std::string& p_strHolder) {
    const std::string strLine = p_strHolder + "\n";
    if (::ftruncate(p_iFile, 0) == 0) {
        static_cast<void>(::pwrite(p_iFile, strLine.data(), strLine.size(), 0) > 0);
    }
}

}  // namespace

CStateLock::~CStateLock() {
    if (m_bTaken && MSaveName::IsNameOf(AT_FDCWD, m_strPath, m_objFile.Number())) {
        ::unlink(m_strPath.c_str());
    }
}

bool CStateLock::Take(const std::string& p_strPath, const std::string& p_strHolder,
                      std::string& p_strWhy, bool& p_bHeld) {
    m_strPath = p_strPath;
    // The file may go, with the lock of another, between its opening and its locking.
    do {
        if (!Open(p_strWhy)) {
            return false;
        }
        if (::flock(m_objFile.Number(), LOCK_EX | LOCK_NB) != 0) {
            p_bHeld = errno == EWOULDBLOCK;
            p_strWhy = p_bHeld ? HolderIn(m_objFile.Number()) : SystemWords();
            return false;
        }
    } while (!MSaveName::IsNameOf(AT_FDCWD, p_strPath, m_objFile.Number()));
    m_bTaken = true;
    WriteHolder(m_objFile.Number(), p_strHolder);
    return true;
}

bool CStateLock::Open(std::string& p_strWhy) {
    m_objFile = CFileHandle(
        ::open(m_strPath.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
               S_IRUSR | S_IWUSR));
    struct stat objStatus = {};
    if (!m_objFile.IsOpen() || ::fstat(m_objFile.Number(), &objStatus) != 0) {
        p_strWhy = SystemWords();
        return false;
    }
    if (!S_ISREG(objStatus.st_mode)) {
        p_strWhy = m_strPath + " is no file";
        return false;
    }
    return true;
}
