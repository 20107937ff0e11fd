#pragma once

#include "cli/IInterrupt.h"

#include <string>

/// Keeps what is set, and holds nothing back.
class CFakeInterrupt : public IInterrupt {
public:
    std::string m_strWords;
    std::string m_strNote;
    bool m_bPending = false;

    void SetLastWords(const std::string& p_strBytes) override { m_strWords = p_strBytes; }
    void SetLastNote(const std::string& p_strBytes) override { m_strNote = p_strBytes; }
    void RunHeld(const std::function<void()>& p_fnWork) override { p_fnWork(); }
    [[nodiscard]] bool IsPending() const override { return m_bPending; }
    [[nodiscard]] int WakeHandle() const override { return -1; }
};
