#pragma once

#include "cli/IInterrupt.h"

#include <list>

/// Ctrl-C ends the program at once, with MExitCode::Interrupted: nothing that runs is left undone
/// half, for a file is written all or nothing. What RunHeld runs has GraceMilliseconds to close its
/// link. So does every other way of asking a program to end: SIGTERM, and SIGHUP where there is
/// one. One at a time may exist: signals belong to the process.
class CInterrupt : public IInterrupt {
public:
    /// How long Ctrl-C is held back at most.
    static constexpr int GraceMilliseconds = 80;

    CInterrupt();
    ~CInterrupt() override;
    CInterrupt(const CInterrupt&) = delete;
    CInterrupt& operator=(const CInterrupt&) = delete;

    void SetLastWords(const std::string& p_strBytes) override;
    void SetLastNote(const std::string& p_strBytes) override;
    void RunHeld(const std::function<void()>& p_fnWork) override;
    [[nodiscard]] bool IsPending() const override;
    [[nodiscard]] int WakeHandle() const override { return m_iWake; }

private:
    int m_iWake = -1;                   // the end that is read; owned, as is the one written to
    std::list<std::string> m_strWords;  // all that were set: a signal may be reading the one before
};
