#include "ui/UCParameterSetting.h"

#include "ui/MControl.h"
#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <array>

namespace {

struct Field {
    const char* m_strCaption;
    const char* m_strName;
};

constexpr int FieldsPerRow = 2;
constexpr int ManualCode = 3;

// In reading order, two a row. The captions are shown as they stand here, "FOWARD" included.
// clang-format off
constexpr auto ParameterFields = std::to_array<Field>({
    {"FONT CODE", "cmbFontCode"},
    {"ZERO CODE", "cmbZeroCode"},
    {"SPEED", "cmbSpeed"},
    {"DATA LENG.", "cmbDataLeg"},
    {"STOP BIT", "cmbStopBit"},
    {"PARITY", "cmbParity"},
    {"CONTROL", "cmbControl"},
    {"FOWARD WAIT", "cmbFowardWait"},
    {"FOWARD POSITION", "SeFowardPosition"},
    {"CODE", "cmbCode"},
    {"PEEL OFF STATUS", "cmbPeelOffStatus"},
    {"FEED KEY", "cmbFeedKey"},
    {"KANJI CODE", "cmbKanji"},
    {"EURO CODE", "SeEuroCode"},
    {"AUTO HD CHK", "cmbAutoHdChk"},
    {"ACK/BUSY", "cmbAckBusy"},
    {"WEB PRINTER", "cmbWebPrinter"},
    {"INPUT PRIME", "cmbInputPrime"},
    {"RIBBON NEAR END", "cmbRibbonNearEnd"},
    {"EX.I/O MODE", "cmbExIoMode"},
    {"PLUG && PLAY", "cmbPlugPlay"},
    {"LBL/RBN END", "cmbLblRbnEnd"},
    {"PRE PEEL OFF", "cmbPrePeelOff"},
    {"BACK SPEED", "cmbBackSpeed"},
    {"MAXI CODE SPEC.", "cmbMaxiCodeSpec"},
    {"KB I/F", "cmbKbIF"},
    {"PEEL OFF TRQ", "cmbPeelOffTrq"},
});

constexpr std::array CodeFields{"SeCode1", "SeCode2", "SeCode3"};

constexpr auto AdjustmentFields = std::to_array<Field>({
    {"FEED ADJ.", "SeFeedAdj"},
    {"CUT ADJ.", "SeCutAdj"},
    {"BACK ADJ.", "SeBackAdj"},
    {"X ADJ.", "SeXAdj"},
    {"TONE ADJ.<T>", "SeToneAdjT"},
    {"TONE ADJ.<D>", "SeToneAdjD"},
    {"RBN ADJ.<FW>", "SeRbnAdjFw"},
    {"RBN ADJ.<BK>", "SeRbnAdjBk"},
    {"THRESHOLD<R>", "SeThresholdR"},
    {"THRESHOLD<T>", "SeThresholdT"},
});

constexpr auto PageButtons = std::to_array<Field>({
    {"READ", "btnRead"},
    {"SET", "btnSet"},
    {"LOAD", "btnLoad"},
    {"SAVE", "btnSave"},
});
// clang-format on

const QString CodeCaption = QStringLiteral("CODE");

/// The three character codes stand behind the list that can make them count.
void AddCodes(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid, int p_iRow, int p_iColumn,
              QWidget* p_cmb) {
    auto* const objLine = new QHBoxLayout;
    objLine->setSpacing(p_objGrid.verticalSpacing());
    objLine->addWidget(p_cmb);
    int iNumber = 0;
    for (const char* strName : CodeFields) {
        UCSpinEdit* const Se = p_objBuilder.MakeSpinEdit(p_objGrid.parentWidget(), strName);
        CPageBuilder::NameAfter(*Se, QStringLiteral("CODE %1").arg(++iNumber));
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
    CPageBuilder::MakeSameHeight(*this);
    objGrid->addWidget(MakeButtons(p_objBuilder), 1, 0, 1, 2);
    objGrid->setColumnStretch(0, 3);
    objGrid->setColumnStretch(1, 1);
    objGrid->setRowStretch(2, 1);
    m_objBinding.emplace(*this, MBinding::ParameterSetting());
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
    for (const Field& objField : ParameterFields) {
        QWidget* const objControl = p_objBuilder.AddField(
            *objGrid, CellRow(), CellColumn(), objField.m_strCaption, objField.m_strName);
        if (objField.m_strCaption == CodeCaption) {
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
    for (const char* strName : CodeFields) {
        MControl::Find<UCSpinEdit>(*this, strName).SetEnable(p_bEnabled);
    }
}

QWidget* UCParameterSetting::MakeAdjustmentFrame(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrAdjustment", "Adjustment");
    auto* const objGrid = new QGridLayout(Fr);
    int iRow = 0;
    for (const Field& objField : AdjustmentFields) {
        p_objBuilder.AddField(*objGrid, iRow++, 0, objField.m_strCaption, objField.m_strName);
    }
    objGrid->setColumnStretch(1, 1);
    objGrid->setRowStretch(iRow, 1);
    return Fr;
}

QWidget* UCParameterSetting::MakeButtons(const CPageBuilder& p_objBuilder) {
    auto* const objButtons = new QWidget(this);
    auto* const objLine = new QHBoxLayout(objButtons);
    objLine->setContentsMargins(0, 0, 0, 0);
    for (const Field& objButton : PageButtons) {
        objLine->addWidget(
            p_objBuilder.MakeButton(objButtons, objButton.m_strName, objButton.m_strCaption));
    }
    objLine->addStretch(1);
    return objButtons;
}
