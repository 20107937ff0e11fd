#pragma once

#include "cli/CLoadedSettings.h"

#include <string>

/// A place that settings come from, and how the command line names it.
class ISettingsSource {
public:
    virtual ~ISettingsSource() = default;

    /// True when p_strName names a place of this kind.
    [[nodiscard]] virtual bool Knows(const std::string& p_strName) const = 0;

    /// The settings there are. Throws CCommandError when they cannot be had.
    virtual CLoadedSettings Load(const std::string& p_strName) = 0;
};
