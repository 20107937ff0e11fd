#include "cli/CInterrupt.h"

#include "cli/MExitCode.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>
#endif

namespace {

// What asks the program to end: Ctrl-C; a system or another program that ends it; the terminal that
// is gone.
#ifdef _WIN32
constexpr std::array Signals{SIGINT, SIGTERM};
#else
constexpr std::array Signals{SIGINT, SIGTERM, SIGHUP};
#endif

// A signal handler gets no argument: what it writes must be known to the file.
std::atomic<const std::string*> g_strLastWords{nullptr};
std::atomic<const std::string*> g_strLastNote{nullptr};
std::atomic<bool> g_bHeld{false};
std::atomic<bool> g_bPending{false};
std::atomic<int> g_iWake{-1};  // the end of the pipe that is written to
static_assert(std::atomic<const std::string*>::is_always_lock_free);
static_assert(std::atomic<bool>::is_always_lock_free);
static_assert(std::atomic<int>::is_always_lock_free);

#ifndef _WIN32
void Put(int p_iStream, const std::string* p_strBytes) {
    if (p_strBytes != nullptr && !p_strBytes->empty()) {
        [[maybe_unused]] const auto iWritten =
            ::write(p_iStream, p_strBytes->data(), p_strBytes->size());
    }
}

/// A pipe that wakes who waits for its first end; no program that is started has it. Ends of -1
/// when there is none to be had.
std::array<int, 2> MakePipe() {
    std::array iEnds{-1, -1};
    if (::pipe(iEnds.data()) == 0) {
        for (int& iEnd : iEnds) {
            // Who is started without standard streams must not get an end as one of these.
            const int iHigh = ::fcntl(iEnd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
            ::close(iEnd);
            iEnd = iHigh;
            ::fcntl(iEnd, F_SETFL, O_NONBLOCK);
        }
    }
    return iEnds;
}
#endif

[[noreturn]] void End(int /*p_iSignal*/) {
#ifndef _WIN32
    Put(STDERR_FILENO, g_strLastNote.load());
    Put(STDOUT_FILENO, g_strLastWords.load());
#endif
    std::_Exit(MExitCode::Interrupted);
}

void OnInterrupt(int p_iSignal) {
    const bool bFirst = !g_bPending.exchange(true);
#ifndef _WIN32
    if (bFirst && g_bHeld) {
        const int iError = errno;
        const int iWake = g_iWake;
        [[maybe_unused]] const auto iWritten = ::write(iWake, "", 1);
        const itimerval objGrace{{0, 0}, {0, CInterrupt::GraceMilliseconds * 1000}};
        ::setitimer(ITIMER_REAL, &objGrace, nullptr);
        errno = iError;
        return;
    }
#endif
    End(p_iSignal);
}

}  // namespace

CInterrupt::CInterrupt() {
#ifndef _WIN32
    const auto [iRead, iWritten] = MakePipe();
    m_iWake = iRead;
    g_iWake = iWritten;
#endif
    // A program in the background of a script does not hear Ctrl-C, one under nohup not that its
    // terminal is gone, and both go on so.
    for (const int iSignal : Signals) {
        if (std::signal(iSignal, &OnInterrupt) == SIG_IGN) {
            std::signal(iSignal, SIG_IGN);
        }
    }
#ifndef _WIN32
    std::signal(SIGALRM, &End);
#endif
}

CInterrupt::~CInterrupt() {
    for (const int iSignal : Signals) {
        std::signal(iSignal, SIG_DFL);
    }
#ifndef _WIN32
    std::signal(SIGALRM, SIG_DFL);
    ::close(g_iWake.exchange(-1));
    ::close(m_iWake);
#endif
    g_bPending = false;
    g_strLastWords = nullptr;
    g_strLastNote = nullptr;
}

void CInterrupt::SetLastWords(const std::string& p_strBytes) {
    g_strLastWords = &m_strWords.emplace_back(p_strBytes);
}

void CInterrupt::SetLastNote(const std::string& p_strBytes) {
    g_strLastNote = &m_strWords.emplace_back(p_strBytes);
}

void CInterrupt::RunHeld(const std::function<void()>& p_fnWork) {
    struct Held {
        Held() { g_bHeld = true; }
        ~Held() {
            g_bHeld = false;
            if (g_bPending) {
                End(SIGINT);
            }
        }
    };
    const Held objHeld;
    p_fnWork();
}

bool CInterrupt::IsPending() const {
    return g_bPending;
}
