#include "ui/UCParameterSetting.h"

#include "ui/CFieldTexts.h"
#include "ui/CFootedArea.h"
#include "ui/MControl.h"
#include "ui/MSettingControls.h"
#include "ui/MSettingNotes.h"
#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace {

using MSettingControls::Place;

struct Button {
    const char* m_strCaption;
    const char* m_strName;
};

constexpr int FieldsPerRow = 2;
constexpr int ManualCode = 3;

// clang-format off
constexpr auto PageButtons = std::to_array<Button>({
    {"READ", "btnRead"},
    {"SET", "btnSet"},
    {"LOAD", "btnLoad"},
    {"SAVE", "btnSave"},
});
// clang-format on

/// The list behind which the codes stand.
constexpr std::string_view CodeSetting = "code";

/// The rows of one place of the page, in reading order.
std::vector<MSettingControls::Row> RowsOf(Place p_iPlace) {
    std::vector<MSettingControls::Row> objRows;
    std::ranges::copy_if(MSettingControls::ParameterSetting(), std::back_inserter(objRows),
                         [p_iPlace](const MSettingControls::Row& p_objRow) {
                             return p_objRow.m_iPlace == p_iPlace;
                         });
    return objRows;
}

QWidget* AddField(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid, int p_iRow,
                  int p_iColumn, const MSettingControls::Row& p_objRow) {
    return p_objBuilder.AddField(p_objGrid, p_iRow, p_iColumn, MSettingControls::Caption(p_objRow),
                                 QString::fromStdString(p_objRow.m_strControl));
}

/// The three character codes stand behind the list that can make them count.
void AddCodes(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid, int p_iRow, int p_iColumn,
              QWidget* p_cmb) {
    auto* const objLine = new QHBoxLayout;
    objLine->setSpacing(p_objGrid.verticalSpacing());
    objLine->addWidget(p_cmb);
    for (const MSettingControls::Row& objRow : RowsOf(Place::Codes)) {
        UCSpinEdit* const Se = p_objBuilder.MakeSpinEdit(
            p_objGrid.parentWidget(), QString::fromStdString(objRow.m_strControl));
        CPageBuilder::NameAfter(*Se, MSettingControls::Caption(objRow));
        Se->setMinimumWidth(Se->fontMetrics().horizontalAdvance("MMMM"));
        objLine->addWidget(Se, 1);
    }
    p_objGrid.addLayout(objLine, p_iRow, p_iColumn);
}

}  // namespace

UCParameterSetting::UCParameterSetting(const CPageBuilder& p_objBuilder,
                                       const CItemManager& p_objItemManager, QWidget* p_objParent)
    : QWidget(p_objParent)
    , m_objItemManager(p_objItemManager) {
    auto* const objGrid = new QGridLayout(this);
    objGrid->addWidget(MakeParameterFrame(p_objBuilder), 0, 0);
    objGrid->addWidget(MakeAdjustmentFrame(p_objBuilder), 0, 1);
    m_objFoot = MakeFoot(p_objBuilder);
    objGrid->addWidget(m_objFoot->Place(), 1, 0, 1, 2);
    objGrid->setColumnStretch(0, 3);
    objGrid->setColumnStretch(1, 1);
    objGrid->setRowStretch(2, 1);
    m_objBinding.emplace(*this, MBinding::ParameterSetting());
    m_objBaseline.emplace(m_objBinding->Controls());
    m_objMarks.emplace(*this, *m_objBaseline);
    MSettingNotes::Tell(*this, MSettingControls::ParameterSetting());
}

bool UCParameterSetting::RefreshParameterSettingItem(const CItemManager& p_objItemManager,
                                                     bool p_bDefaultValue) {
    return m_objBinding->Refresh(p_objItemManager, p_bDefaultValue);
}

bool UCParameterSetting::StoreParameterSettingItem(const CItemManager& p_objItemManager) {
    return m_objBinding->Store(p_objItemManager);
}

QWidget* UCParameterSetting::MakeParameterFrame(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrParameter", "Parameter");
    auto* const objGrid = new QGridLayout(Fr);
    int iCell = 0;
    const auto CellRow = [&] { return iCell / FieldsPerRow; };
    const auto CellColumn = [&] { return iCell % FieldsPerRow * 2; };
    for (const MSettingControls::Row& objRow : RowsOf(Place::Parameter)) {
        QWidget* const objControl =
            AddField(p_objBuilder, *objGrid, CellRow(), CellColumn(), objRow);
        if (objRow.m_strSetting == CodeSetting) {
            AddCodes(p_objBuilder, *objGrid, CellRow(), CellColumn() + 1, objControl);
        }
        ++iCell;
    }
    objGrid->addWidget(p_objBuilder.MakeLabel(Fr, {}), CellRow(), CellColumn());
    objGrid->setColumnStretch(1, 1);
    objGrid->setColumnStretch(3, 1);
    objGrid->setHorizontalSpacing(2 * objGrid->horizontalSpacing());
    connect(&MControl::Find<QComboBox>(*Fr, "cmbCode"), &QComboBox::currentIndexChanged, this,
            [this](int p_iPosition) { EnableCodes(p_iPosition == ManualCode); });
    EnableCodes(false);
    return Fr;
}

void UCParameterSetting::EnableCodes(bool p_bEnabled) {
    for (const MSettingControls::Row& objRow : RowsOf(Place::Codes)) {
        MControl::Find<UCSpinEdit>(*this, QString::fromStdString(objRow.m_strControl))
            .SetEnable(p_bEnabled);
    }
}

QWidget* UCParameterSetting::MakeAdjustmentFrame(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrAdjustment", "Adjustment");
    auto* const objGrid = new QGridLayout(Fr);
    int iRow = 0;
    for (const MSettingControls::Row& objRow : RowsOf(Place::Adjustment)) {
        AddField(p_objBuilder, *objGrid, iRow++, 0, objRow);
    }
    objGrid->setColumnStretch(1, 1);
    objGrid->setRowStretch(iRow, 1);
    return Fr;
}

CPageFoot* UCParameterSetting::MakeFoot(const CPageBuilder& p_objBuilder) {
    auto* const objFoot = new CPageFoot(this);
    auto* const objLine = new QHBoxLayout(objFoot);
    auto* const objGrid = static_cast<QGridLayout*>(layout());
    // The foot has what the page would have around it, so that it hides what is behind it.
    QMargins objMargins = objGrid->contentsMargins();
    objMargins.setTop(objGrid->verticalSpacing());
    objLine->setContentsMargins(objMargins);
    objMargins = objGrid->contentsMargins();
    objMargins.setBottom(0);
    objGrid->setContentsMargins(objMargins);
    objGrid->setVerticalSpacing(0);
    for (const Button& objButton : PageButtons) {
        QPushButton* const btn =
            p_objBuilder.MakeButton(objFoot, objButton.m_strName, objButton.m_strCaption);
        CFieldTexts::Of(*btn).Set(CFieldTexts::Part::Where, "Parameter and Adjustment");
        objLine->addWidget(btn);
    }
    objLine->addStretch(1);
    return objFoot;
}
