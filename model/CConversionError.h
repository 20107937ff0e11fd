#pragma once

#include <stdexcept>
#include <string>

/// A value that had to be a number and is not one, or is one outside the range asked for.
///
/// The one error type of MNumber; it travels to the trap of the handler that is running.
class CConversionError : public std::runtime_error {
public:
    /// @param p_strValue the text that could not be read, as it stood.
    explicit CConversionError(const std::string& p_strValue)
        : std::runtime_error("not a number in range: \"" + p_strValue + "\"") {}

    /// The same error, and whose value it was.
    CConversionError(const std::string& p_strOwner, const CConversionError& p_objError)
        : std::runtime_error(p_strOwner + ": " + p_objError.what()) {}
};
