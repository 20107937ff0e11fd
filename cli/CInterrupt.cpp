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
std::atomic<const std::string*> g_strLastNote{nullptr};
static_assert(std::atomic<const std::string*>::is_always_lock_free);

#ifndef _WIN32
void Put(int p_iStream, const std::string* p_strBytes) {
    if (p_strBytes != nullptr && !p_strBytes->empty()) {
        [[maybe_unused]] const auto iWritten =
            ::write(p_iStream, p_strBytes->data(), p_strBytes->size());
    }
}
#endif

void OnInterrupt(int /*p_iSignal*/) {
#ifndef _WIN32
    Put(STDERR_FILENO, g_strLastNote.load());
    Put(STDOUT_FILENO, g_strLastWords.load());
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
    g_strLastNote = nullptr;
}

void CInterrupt::SetLastWords(const std::string& p_strBytes) {
    g_strLastWords = &m_strWords.emplace_back(p_strBytes);
}

void CInterrupt::SetLastNote(const std::string& p_strBytes) {
    g_strLastNote = &m_strWords.emplace_back(p_strBytes);
}
