#include "cli/CInterrupt.h"

#include "cli/MExitCode.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>

#ifndef _WIN32
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
static_assert(std::atomic<const std::string*>::is_always_lock_free);
static_assert(std::atomic<bool>::is_always_lock_free);

#ifndef _WIN32
void Put(int p_iStream, const std::string* p_strBytes) {
    if (p_strBytes != nullptr && !p_strBytes->empty()) {
        [[maybe_unused]] const auto iWritten =
            ::write(p_iStream, p_strBytes->data(), p_strBytes->size());
    }
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
        const itimerval objGrace{{0, 0}, {0, CInterrupt::GraceMilliseconds * 1000}};
        ::setitimer(ITIMER_REAL, &objGrace, nullptr);
        return;
    }
#endif
    End(p_iSignal);
}

}  // namespace

CInterrupt::CInterrupt() {
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
