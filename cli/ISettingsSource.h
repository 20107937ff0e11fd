#pragma once

#include "cli/CLoadedSettings.h"
#include "cli/COutput.h"

#include <functional>
#include <string>

/// A place that settings come from, and how the command line names it.
class ISettingsSource {
public:
    /// Brings settings. Throws CCommandError when they cannot be had.
    using Fetch = std::function<CLoadedSettings()>;

    virtual ~ISettingsSource() = default;

    /// True when p_strName names a place of this kind.
    [[nodiscard]] virtual bool Knows(const std::string& p_strName) const = 0;

    /// What fetches the settings there, to be called once. Throws CCommandError when it can be told
    /// without a printer that they cannot be had. No printer is sent anything before the fetching.
    /// @param p_objOutput shows how far the fetching is. Not owned, outlives the result.
    virtual Fetch Open(const std::string& p_strName, COutput& p_objOutput) = 0;
};
