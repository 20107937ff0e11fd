#include "cli/CInterrupt.h"

#include "cli/MExitCode.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace {

// A signal handler gets no argument: what it writes must be known to the file.
std::atomic<const std::string*> g_strLastWords{nullptr};
static_assert(std::atomic<const std::string*>::is_always_lock_free);

void OnInterrupt(int /*p_iSignal*/) {
#ifndef _WIN32
    const std::string* const strWords = g_strLastWords.load();
    if (strWords != nullptr && !strWords->empty()) {
        [[maybe_unused]] const auto iWritten =
            ::write(STDOUT_FILENO, strWords->data(), strWords->size());
    }
#endif
    std::_Exit(MExitCode::Interrupted);
}

}  // namespace

CInterrupt::CInterrupt() {
    // A program in the background of a script does not hear Ctrl-C, and goes on so.
    if (std::signal(SIGINT, &OnInterrupt) == SIG_IGN) {
        std::signal(SIGINT, SIG_IGN);
    }
}

CInterrupt::~CInterrupt() {
    std::signal(SIGINT, SIG_DFL);
    g_strLastWords = nullptr;
}

void CInterrupt::SetLastWords(const std::string& p_strBytes) {
    g_strLastWords = &m_strWords.emplace_back(p_strBytes);
}
