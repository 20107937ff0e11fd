#pragma once

#include <stdexcept>

/// A text that cannot be a setting's value; what() tells people why, and what could be.
class CSettingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
