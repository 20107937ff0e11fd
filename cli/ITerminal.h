#pragma once

#include <optional>
#include <string>

/// The person in front of the program.
class ITerminal {
public:
    virtual ~ITerminal() = default;

    /// Whether somebody can be asked: standard input and standard error are a terminal.
    [[nodiscard]] virtual bool CanAsk() const = 0;

    /// Shows p_strQuestion on standard error and reads a line; nothing when none comes any more.
    virtual std::optional<std::string> Ask(const std::string& p_strQuestion) = 0;
};
