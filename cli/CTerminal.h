#pragma once

#include "cli/IInterrupt.h"
#include "cli/ITerminal.h"

/// The terminal that the program runs in.
class CTerminal : public ITerminal {
public:
    /// p_objInterrupt is not owned and outlives this.
    explicit CTerminal(IInterrupt& p_objInterrupt)
        : m_objInterrupt(p_objInterrupt) {}

    [[nodiscard]] bool CanAsk() const override;

    /// Ctrl-C meanwhile ends the program at once.
    std::optional<std::string> Ask(const std::string& p_strQuestion) override;

private:
    IInterrupt& m_objInterrupt;
};
