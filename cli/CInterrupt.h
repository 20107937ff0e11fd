#pragma once

#include "cli/IInterrupt.h"

#include <list>

/// Ctrl-C ends the program at once, with MExitCode::Interrupted: nothing that runs is left undone
/// half, for a file is written all or nothing and a link closes with the program. One at a time may
/// exist: signals belong to the process.
class CInterrupt : public IInterrupt {
public:
    CInterrupt();
    ~CInterrupt() override;
    CInterrupt(const CInterrupt&) = delete;
    CInterrupt& operator=(const CInterrupt&) = delete;

    void SetLastWords(const std::string& p_strBytes) override;
    void SetLastNote(const std::string& p_strBytes) override;

private:
    std::list<std::string> m_strWords;  // all that were set: a signal may be reading the one before
};
