#pragma once

#include "flows/ISettingsPage.h"
#include "model/CItemManager.h"
#include "ui/CChangeMarks.h"
#include "ui/CFormBinding.h"
#include "ui/CPageBuilder.h"
#include "ui/CReadBaseline.h"

#include <QWidget>

#include <optional>

class QGridLayout;

/// The page "Extra Setting": the printer's network settings, and the buttons that read, set, load
/// and save them.
class UCExtraSetting : public QWidget, public ISettingsPage {
public:
    /// p_objItemManager is not owned and outlives the page. The lists and spin edits are still
    /// empty afterwards; the window fills those of all pages.
    UCExtraSetting(const CPageBuilder& p_objBuilder, const CItemManager& p_objItemManager,
                   QWidget* p_objParent);

    /// The items' values, or their defaults, into the controls; fails as CFormBinding does.
    bool RefreshLanSettingItem(const CItemManager& p_objItemManager, bool p_bDefaultValue);

    /// The controls into the items; fails as CFormBinding does.
    bool StoreLanSettingItem(const CItemManager& p_objItemManager);

    bool Refresh() override { return RefreshLanSettingItem(m_objItemManager, false); }
    bool Store() override { return StoreLanSettingItem(m_objItemManager); }
    void NoteRead() override { m_objBaseline->NoteRead(m_objBinding->Refused()); }

    /// What the page held when it was last read; the window begins it.
    [[nodiscard]] CReadBaseline& Baseline() { return *m_objBaseline; }

private:
    QWidget* MakeLanFrame(const CPageBuilder& p_objBuilder);

    const CItemManager& m_objItemManager;
    std::optional<CFormBinding> m_objBinding;
    std::optional<CReadBaseline> m_objBaseline;
    std::optional<CChangeMarks> m_objMarks;
};
