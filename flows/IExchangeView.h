#pragma once

#include <string>

/// What an exchange with the printer shows of itself while it runs.
class IExchangeView {
public:
    virtual ~IExchangeView() = default;

    /// Enables or disables the buttons that start something with the printer.
    virtual void SetControlsEnabled(bool p_bEnabled) = 0;

    /// Keeps a person from choosing another interface, or does not any more.
    virtual void HoldInterface(bool /*p_bHeld*/) {}

    /// Shows the printer's status; an empty text clears it.
    virtual void ShowStatus(const std::string& p_strText) = 0;

    /// Shows the result of a head check; an empty text clears it.
    virtual void ShowHeadCheck(const std::string& p_strText) = 0;
};
