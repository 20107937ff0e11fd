#pragma once

#include "flows/ISettingsPage.h"
#include "model/CItemManager.h"
#include "ui/CChangeMarks.h"
#include "ui/CFormBinding.h"
#include "ui/CPageBuilder.h"
#include "ui/CReadBaseline.h"

#include <QWidget>

#include <optional>

class CPageFoot;

/// The page "Parameter Setting": the printer's parameters and adjustments, and the buttons that
/// read, set, load and save them.
class UCParameterSetting : public QWidget, public ISettingsPage {
public:
    /// p_objItemManager is not owned and outlives the page. The lists and spin edits are still
    /// empty afterwards; the window fills those of all pages.
    UCParameterSetting(const CPageBuilder& p_objBuilder, const CItemManager& p_objItemManager,
                       QWidget* p_objParent);

    /// The row of the page's buttons.
    [[nodiscard]] CPageFoot* Foot() { return m_objFoot; }

    /// The items' values, or their defaults, into the controls; fails as CFormBinding does.
    bool RefreshParameterSettingItem(const CItemManager& p_objItemManager, bool p_bDefaultValue);

    /// The controls into the items; fails as CFormBinding does.
    bool StoreParameterSettingItem(const CItemManager& p_objItemManager);

    bool Refresh() override { return RefreshParameterSettingItem(m_objItemManager, false); }
    bool Store() override { return StoreParameterSettingItem(m_objItemManager); }
    void NoteRead() override { m_objBaseline->NoteRead(m_objBinding->Refused()); }

    /// What the page held when it was last read; the window begins it.
    [[nodiscard]] CReadBaseline& Baseline() { return *m_objBaseline; }

private:
    QWidget* MakeParameterFrame(const CPageBuilder& p_objBuilder);
    QWidget* MakeAdjustmentFrame(const CPageBuilder& p_objBuilder);
    CPageFoot* MakeFoot(const CPageBuilder& p_objBuilder);
    void EnableCodes(bool p_bEnabled);

    const CItemManager& m_objItemManager;
    CPageFoot* m_objFoot = nullptr;
    std::optional<CFormBinding> m_objBinding;
    std::optional<CReadBaseline> m_objBaseline;
    std::optional<CChangeMarks> m_objMarks;
};
