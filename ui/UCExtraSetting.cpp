#include "ui/UCExtraSetting.h"

#include "ui/UCSpinEdit.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>

namespace {

struct Named {
    const char* m_strCaption;
    const char* m_strName;
};

constexpr int AddressParts = 4;

// An address has four fields, its name followed by 1 to 4.
// clang-format off
constexpr auto Addresses = std::to_array<Named>({
    {"IP ADDRESS", "SeIpAddress"},
    {"SUBNET MASK", "SeSubNet"},
    {"DEFAULT GATEWAY", "SeGateway"},
});

constexpr auto PageButtons = std::to_array<Named>({
    {"READ", "btnLanRead"},
    {"SET", "btnLanSet"},
    {"LOAD", "btnLanLoad"},
    {"SAVE", "btnLanSave"},
});
// clang-format on

void AddAddress(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid, int p_iRow,
                const Named& p_objAddress) {
    QWidget* const objParent = p_objGrid.parentWidget();
    const QString strCaption = p_objAddress.m_strCaption;
    QLabel* const lbl = p_objBuilder.MakeLabel(objParent, strCaption);
    p_objGrid.addWidget(lbl, p_iRow, 0);
    auto* const objLine = new QHBoxLayout;
    for (int iPart = 1; iPart <= AddressParts; ++iPart) {
        if (iPart > 1) {
            objLine->addWidget(p_objBuilder.MakeLabel(objParent, "."));
        }
        UCSpinEdit* const Se = p_objBuilder.MakeSpinEdit(
            objParent, QString(p_objAddress.m_strName) + QString::number(iPart));
        CPageBuilder::NameAfter(*Se, QStringLiteral("%1 %2").arg(strCaption).arg(iPart));
        objLine->addWidget(Se, 1);
        if (iPart == 1) {
            lbl->setBuddy(Se);
        }
    }
    p_objGrid.addLayout(objLine, p_iRow, 1);
}

void AddSocketPort(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid, int p_iRow) {
    QWidget* const objParent = p_objGrid.parentWidget();
    const QString strCaption = QStringLiteral("SOCKET PORT");
    QLabel* const lbl = p_objBuilder.MakeLabel(objParent, strCaption);
    auto* const objLine = new QHBoxLayout;
    for (const char* strName : {"cmbPort", "SeSocetPort"}) {
        QWidget* const objField = p_objBuilder.MakeField(objParent, strName);
        CPageBuilder::NameAfter(*objField, strCaption);
        objLine->addWidget(objField, 1);
        lbl->setBuddy(objField);  // at last the number; whether it counts comes before it
    }
    p_objGrid.addWidget(lbl, p_iRow, 0);
    p_objGrid.addLayout(objLine, p_iRow, 1);
}

}  // namespace

UCExtraSetting::UCExtraSetting(const CPageBuilder& p_objBuilder,
                               const CItemManager& p_objItemManager, QWidget* p_objParent)
    : QWidget(p_objParent)
    , m_objItemManager(p_objItemManager) {
    auto* const objGrid = new QGridLayout(this);
    objGrid->addWidget(MakeLanFrame(p_objBuilder), 0, 0);
    objGrid->setColumnStretch(1, 1);
    objGrid->setRowStretch(1, 1);
    m_objBinding.emplace(*this, MBinding::Lan());
}

bool UCExtraSetting::RefreshLanSettingItem(const CItemManager& p_objItemManager,
                                           bool p_bDefaultValue) {
    return m_objBinding->Refresh(p_objItemManager, p_bDefaultValue);
}

bool UCExtraSetting::StoreLanSettingItem(const CItemManager& p_objItemManager) {
    return m_objBinding->Store(p_objItemManager);
}

QWidget* UCExtraSetting::MakeLanFrame(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrLan", "LAN");
    auto* const objGrid = new QGridLayout(Fr);
    int iRow = 0;
    for (const Named& objAddress : Addresses) {
        AddAddress(p_objBuilder, *objGrid, iRow++, objAddress);
    }
    AddSocketPort(p_objBuilder, *objGrid, iRow++);
    p_objBuilder.AddField(*objGrid, iRow++, 0, "DHCP", "cmbDhcp");
    p_objBuilder.AddField(*objGrid, iRow++, 0, "DHCP HOST NAME", "txtDhcpName");
    auto* const objLine = new QHBoxLayout;
    for (const Named& objButton : PageButtons) {
        objLine->addWidget(
            p_objBuilder.MakeButton(Fr, objButton.m_strName, objButton.m_strCaption));
    }
    objLine->addStretch(1);
    objGrid->addLayout(objLine, iRow, 0, 1, 2);
    return Fr;
}
