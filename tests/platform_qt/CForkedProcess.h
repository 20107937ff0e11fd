#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <functional>

/// Work in a process of its own, which lives on behind it until it is killed.
class CForkedProcess {
public:
    /// Comes back when the work is done.
    explicit CForkedProcess(const std::function<bool()>& p_fnWork) {
        std::array<int, 2> iPipe{};
        if (::pipe(iPipe.data()) != 0) {
            return;
        }
        m_iProcess = ::fork();
        if (m_iProcess == 0) {
            const char cDone = p_fnWork() ? 'y' : 'n';
            static_cast<void>(::write(iPipe[1], &cDone, 1) == 1);
            ::close(iPipe[0]);
            ::close(iPipe[1]);
            for (;;) {
                ::pause();
            }
        }
        ::close(iPipe[1]);
        char cDone = 'n';
        m_bDone = ::read(iPipe[0], &cDone, 1) == 1 && cDone == 'y';
        ::close(iPipe[0]);
    }
    ~CForkedProcess() { Kill(); }
    CForkedProcess(const CForkedProcess&) = delete;
    CForkedProcess& operator=(const CForkedProcess&) = delete;

    /// What the work has given.
    [[nodiscard]] bool IsDone() const { return m_bDone; }
    [[nodiscard]] pid_t Number() const { return m_iProcess; }

    /// As kill -9 does.
    void Kill() {
        if (m_iProcess > 0) {
            ::kill(m_iProcess, SIGKILL);
            ::waitpid(m_iProcess, nullptr, 0);
            m_iProcess = -1;
        }
    }

private:
    pid_t m_iProcess = -1;
    bool m_bDone = false;
};
