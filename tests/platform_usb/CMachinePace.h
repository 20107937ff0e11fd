#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <semaphore>
#include <thread>

/// How often a thread of this machine, as busy as it is now, comes to sleep for a while and to hand
/// over to another thread and back. Whoever waits for a device in such steps has come to as many.
class CMachinePace {
public:
    /// Counts from now on.
    explicit CMachinePace(std::chrono::milliseconds p_iSleep)
        : m_objPartner([this] { Answer(); })
        , m_objThread([this, p_iSleep] { Run(p_iSleep); }) {}

    ~CMachinePace() { Stop(); }
    CMachinePace(const CMachinePace&) = delete;
    CMachinePace& operator=(const CMachinePace&) = delete;

    /// The steps until now; ends the counting.
    std::int64_t Stop() {
        m_bEnd = true;
        if (m_objThread.joinable()) {
            m_objThread.join();
            m_objAsked.release();
            m_objPartner.join();
        }
        return m_iSteps;
    }

private:
    void Run(std::chrono::milliseconds p_iSleep) {
        while (!m_bEnd) {
            std::this_thread::sleep_for(p_iSleep);
            m_objAsked.release();
            m_objAnswered.acquire();
            ++m_iSteps;
        }
    }

    void Answer() {
        for (;;) {
            m_objAsked.acquire();
            if (m_bEnd) {
                m_objAnswered.release();
                return;
            }
            m_objAnswered.release();
        }
    }

    std::atomic<bool> m_bEnd = false;
    std::atomic<std::int64_t> m_iSteps = 0;
    std::counting_semaphore<> m_objAsked{0};
    std::counting_semaphore<> m_objAnswered{0};
    std::thread m_objPartner;
    std::thread m_objThread;
};
