#pragma once

#include <string>

/// What becomes of Ctrl-C.
class IInterrupt {
public:
    virtual ~IInterrupt() = default;

    /// From now on Ctrl-C puts p_strBytes on standard output before it ends the program; nothing
    /// when they are empty.
    virtual void SetLastWords(const std::string& p_strBytes) = 0;

    /// The same for standard error, which has them first.
    virtual void SetLastNote(const std::string& p_strBytes) = 0;
};
