#pragma once

#include "cli/ITerminal.h"

#include <vector>

/// A person who types what the test says.
class CFakeTerminal : public ITerminal {
public:
    bool m_bThere = false;
    std::optional<std::string> m_strTyped;
    std::vector<std::string> m_strQuestions;

    [[nodiscard]] bool CanAsk() const override { return m_bThere; }
    std::optional<std::string> Ask(const std::string& p_strQuestion) override {
        m_strQuestions.push_back(p_strQuestion);
        return m_strTyped;
    }
};
