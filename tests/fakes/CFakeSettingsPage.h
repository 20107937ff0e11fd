#pragma once

#include "flows/ISettingsPage.h"

#include <functional>
#include <vector>

/// A page of settings that counts what it is asked for and does what the test says.
class CFakeSettingsPage : public ISettingsPage {
public:
    int m_iRefreshes = 0;
    int m_iStores = 0;
    int m_iNotedReads = 0;
    std::vector<CPageNote> m_objNotes;
    /// What happens, and with which result; may throw. Null succeeds.
    std::function<bool()> m_fnRefresh;
    std::function<bool()> m_fnStore;

    bool Refresh() override {
        ++m_iRefreshes;
        return !m_fnRefresh || m_fnRefresh();
    }

    void NoteRead() override { ++m_iNotedReads; }

    void NoteEnd(const CPageNote& p_objNote) override { m_objNotes.push_back(p_objNote); }

    bool Store() override {
        ++m_iStores;
        return !m_fnStore || m_fnStore();
    }
};
