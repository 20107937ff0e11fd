#pragma once

#include "flows/IExchangeView.h"

#include <functional>
#include <string>
#include <vector>

/// The window as an exchange sees it: keeps everything that it was told.
class CFakeExchangeView : public IExchangeView {
public:
    std::vector<std::string> m_strStatuses;
    std::vector<std::string> m_strHeadChecks;
    std::vector<bool> m_bEnabled;
    /// Called before a status is kept; may throw.
    std::function<void(const std::string&)> m_fnShowStatus;
    /// Called before it is kept.
    std::function<void(bool)> m_fnSetControlsEnabled;

    /// Buttons are enabled until told otherwise.
    [[nodiscard]] bool AreControlsEnabled() const {
        return m_bEnabled.empty() || m_bEnabled.back();
    }

    void SetControlsEnabled(bool p_bEnabled) override {
        if (m_fnSetControlsEnabled) {
            m_fnSetControlsEnabled(p_bEnabled);
        }
        m_bEnabled.push_back(p_bEnabled);
    }

    void ShowStatus(const std::string& p_strText) override {
        if (m_fnShowStatus) {
            m_fnShowStatus(p_strText);
        }
        m_strStatuses.push_back(p_strText);
    }

    void ShowHeadCheck(const std::string& p_strText) override {
        m_strHeadChecks.push_back(p_strText);
    }
};
