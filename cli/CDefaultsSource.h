#pragma once

#include "cli/ISettingsSource.h"

/// What every printer is at first, under the name "defaults".
class CDefaultsSource : public ISettingsSource {
public:
    static constexpr const char* Name = "defaults";

    [[nodiscard]] bool Knows(const std::string& p_strName) const override {
        return p_strName == Name;
    }
    Fetch Open(const std::string& p_strName, COutput& /*p_objOutput*/) override {
        return [p_strName] { return CLoadedSettings{p_strName, CSnapshot(CItemManager()), {}}; };
    }
};
