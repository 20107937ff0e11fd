#include "tests/platform_qt/CSteppedProcess.h"

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace {

constexpr int CouldNotTry = 2;

/// What changes files, or tells what is to become of a change.
constexpr std::array Watched{
    SYS_faccessat, SYS_openat,   SYS_write,     SYS_close,    SYS_fsync,
    SYS_fdatasync, SYS_fchmod,   SYS_fchown,    SYS_flock,    SYS_linkat,
    SYS_unlinkat,  SYS_renameat, SYS_renameat2, SYS_mkdirat,
#ifdef SYS_rename
    SYS_access,    SYS_open,     SYS_link,      SYS_unlink,   SYS_rename,
    SYS_chmod,     SYS_chown,    SYS_mkdir,
#endif
    SYS_fchmodat,  SYS_fchownat, SYS_ftruncate, SYS_pwrite64, SYS_writev,
};

/// From now on the calls of this process wait for whoever has the file that this gives; negative
/// when that cannot be.
int Watch(CSteppedProcess::Nameless p_iNameless) {
    constexpr std::uint32_t iTmpFile = 020000000;  // the bit that is O_TMPFILE's own
    constexpr std::size_t iFlags = offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t);
    std::vector<sock_filter> objSteps{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    if (p_iNameless == CSteppedProcess::Nameless::Missing) {
        objSteps.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 4));
        objSteps.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, iFlags));
        objSteps.push_back(BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, iTmpFile, 0, 1));
        objSteps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | unsigned{EOPNOTSUPP}));
        objSteps.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
    }
    for (const long iCall : Watched) {
        objSteps.push_back(
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(iCall), 0, 1));
        objSteps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
    }
    objSteps.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog objFilter{static_cast<unsigned short>(objSteps.size()), objSteps.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        return -1;
    }
    return static_cast<int>(::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER,
                                      SECCOMP_FILTER_FLAG_NEW_LISTENER, &objFilter));
}

/// A message of one byte that may carry an open file from process to process.
struct Message {
    Message() {
        m_objBytes = {&m_cByte, 1};
        m_objHead.msg_iov = &m_objBytes;
        m_objHead.msg_iovlen = 1;
        m_objHead.msg_control = m_arrControl.data();
        m_objHead.msg_controllen = m_arrControl.size();
    }

    char m_cByte = 'f';
    iovec m_objBytes{};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> m_arrControl{};
    msghdr m_objHead{};
};

bool SendFile(int p_iSocket, int p_iFile) {
    Message objMessage;
    cmsghdr* const objControl = CMSG_FIRSTHDR(&objMessage.m_objHead);
    objControl->cmsg_level = SOL_SOCKET;
    objControl->cmsg_type = SCM_RIGHTS;
    objControl->cmsg_len = CMSG_LEN(sizeof p_iFile);
    std::memcpy(CMSG_DATA(objControl), &p_iFile, sizeof p_iFile);
    return ::sendmsg(p_iSocket, &objMessage.m_objHead, 0) == 1;
}

int ReceiveFile(int p_iSocket) {
    Message objMessage;
    int iFile = -1;
    if (::recvmsg(p_iSocket, &objMessage.m_objHead, MSG_CMSG_CLOEXEC) == 1) {
        const cmsghdr* const objControl = CMSG_FIRSTHDR(&objMessage.m_objHead);
        if (objControl != nullptr) {
            std::memcpy(&iFile, CMSG_DATA(objControl), sizeof iFile);
        }
    }
    return iFile;
}

/// The next call of a watched process; nothing when it has ended.
std::optional<seccomp_notif> Next(int p_iWatch) {
    pollfd objPoll{p_iWatch, POLLIN, 0};
    seccomp_notif objNotice{};
    while (::poll(&objPoll, 1, -1) > 0 && (objPoll.revents & POLLIN) != 0) {
        if (::ioctl(p_iWatch, SECCOMP_IOCTL_NOTIF_RECV, &objNotice) == 0) {
            return objNotice;
        }
        objNotice = {};
    }
    return std::nullopt;
}

/// Lets a call pass or fail.
void Answer(int p_iWatch, std::uint64_t p_iId, int p_iError) {
    seccomp_notif_resp objAnswer{};
    objAnswer.id = p_iId;
    objAnswer.error = -p_iError;
    objAnswer.flags = p_iError == 0 ? SECCOMP_USER_NOTIF_FLAG_CONTINUE : 0;
    ::ioctl(p_iWatch, SECCOMP_IOCTL_NOTIF_SEND, &objAnswer);
}

CSteppedProcess::Call CallOf(pid_t p_iProcess, const seccomp_data& p_objData) {
    CSteppedProcess::Call objCall{p_objData.nr, {}, p_iProcess, {}};
    std::copy(std::begin(p_objData.args), std::end(p_objData.args), objCall.m_iArguments.begin());
    objCall.m_strFile = objCall.FileOf(0);
    return objCall;
}

void Supervise(pid_t p_iProcess, int p_iWatch, const CSteppedProcess::Decide& p_fnDecide) {
    while (const auto objNotice = Next(p_iWatch)) {
        const int iVerdict =
            p_fnDecide(CallOf(static_cast<pid_t>(objNotice->pid), objNotice->data));
        if (iVerdict == CSteppedProcess::Kill) {
            ::kill(p_iProcess, SIGKILL);
            return;
        }
        Answer(p_iWatch, objNotice->id, iVerdict);
    }
}

[[noreturn]] void Work(int p_iSocket, const std::function<bool()>& p_fnWork,
                       CSteppedProcess::Nameless p_iNameless) {
    const int iWatch = Watch(p_iNameless);
    if (iWatch < 0 || !SendFile(p_iSocket, iWatch)) {
        ::_exit(CouldNotTry);
    }
    ::_exit(p_fnWork() ? 0 : 1);
}

/// What waitpid tells of the process in the end.
int RunStepped(const std::function<bool()>& p_fnWork, CSteppedProcess::Nameless p_iNameless,
               const CSteppedProcess::Decide& p_fnDecide) {
    std::array<int, 2> iSockets{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, iSockets.data()) != 0) {
        throw std::runtime_error("no sockets");
    }
    const pid_t iProcess = ::fork();
    if (iProcess == 0) {
        ::close(iSockets[0]);
        Work(iSockets[1], p_fnWork, p_iNameless);
    }
    ::close(iSockets[1]);
    const int iWatch = iProcess > 0 ? ReceiveFile(iSockets[0]) : -1;
    ::close(iSockets[0]);
    if (iWatch >= 0) {
        Supervise(iProcess, iWatch, p_fnDecide);
        ::close(iWatch);
    }
    int iStatus = 0;
    if (iProcess < 0 || ::waitpid(iProcess, &iStatus, 0) != iProcess || iWatch < 0) {
        throw std::runtime_error("a process's calls cannot be heard of");
    }
    return iStatus;
}

}  // namespace

std::string CSteppedProcess::Call::FileOf(std::size_t p_iArgument) const {
    const int iFile = static_cast<int>(m_iArguments.at(p_iArgument));
    const std::string strProcess = "/proc/" + std::to_string(m_iProcess);
    std::error_code objError;
    return std::filesystem::read_symlink(iFile == AT_FDCWD
                                             ? strProcess + "/cwd"
                                             : strProcess + "/fd/" + std::to_string(iFile),
                                         objError)
        .string();
}

std::string CSteppedProcess::Call::TextOf(std::size_t p_iArgument) const {
    std::ifstream objMemory("/proc/" + std::to_string(m_iProcess) + "/mem", std::ios::binary);
    objMemory.seekg(static_cast<std::streamoff>(m_iArguments.at(p_iArgument)));
    std::string strText;
    std::getline(objMemory, strText, '\0');
    return objMemory.good() ? strText : "";
}

CSteppedProcess::Ended CSteppedProcess::Run(const std::function<bool()>& p_fnWork,
                                            Nameless p_iNameless, const Decide& p_fnDecide) {
    const int iStatus = RunStepped(p_fnWork, p_iNameless, p_fnDecide);
    if (WIFSIGNALED(iStatus)) {
        return Ended::Killed;
    }
    return WEXITSTATUS(iStatus) == 0 ? Ended::Done : Ended::Refused;
}

std::optional<int> CSteppedProcess::RunProgram(const std::function<bool()>& p_fnWork,
                                               const Decide& p_fnDecide) {
    const int iStatus = RunStepped(p_fnWork, Nameless::Exist, p_fnDecide);
    return WIFEXITED(iStatus) ? std::optional(WEXITSTATUS(iStatus)) : std::nullopt;
}
