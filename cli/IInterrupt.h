#pragma once

#include <functional>
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

    /// Runs p_fnWork, which has something open that is to be closed. Ctrl-C meanwhile makes
    /// IsPending true and ends the program once p_fnWork has returned, or after a moment if it has
    /// not by then.
    virtual void RunHeld(const std::function<void()>& p_fnWork) = 0;

    /// True from the moment that Ctrl-C has come.
    [[nodiscard]] virtual bool IsPending() const = 0;

    /// A file descriptor that can be read from that moment on, so that a program that sleeps
    /// wakes; -1 when there is none, and who waits has to look at IsPending now and then. Nobody
    /// reads it but by asking whether it can be read.
    [[nodiscard]] virtual int WakeHandle() const = 0;
};
