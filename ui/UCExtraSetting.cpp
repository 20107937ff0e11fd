#include "ui/UCExtraSetting.h"

#include "ui/CAddressParts.h"
#include "ui/CFieldLabel.h"
#include "ui/MControl.h"
#include "ui/MSettingControls.h"
#include "ui/MSettingNotes.h"
#include "ui/UCSpinEdit.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Named {
    const char* m_strCaption;
    const char* m_strName;
};

// Whether the port counts stands in one line with its number, under the number's label.
constexpr std::string_view SocketSetting = "socket";
constexpr std::string_view SocketPortSetting = "socket-port";

// clang-format off
constexpr auto PageButtons = std::to_array<Named>({
    {"READ", "btnLanRead"},
    {"SET", "btnLanSet"},
    {"LOAD", "btnLanLoad"},
    {"SAVE", "btnLanSave"},
});
// clang-format on

/// A line of fields under one label. p_bNumbered: each is called by its number, too.
void AddLine(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid, int p_iRow,
             const QString& p_strCaption, const std::vector<std::string>& p_strControls,
             bool p_bNumbered) {
    QWidget* const objParent = p_objGrid.parentWidget();
    CFieldLabel* const lbl = p_objBuilder.MakeFieldLabel(objParent, p_strCaption);
    auto* const objLine = new QHBoxLayout;
    int iNumber = 0;
    for (const std::string& strControl : p_strControls) {
        QWidget* const objField =
            p_objBuilder.MakeField(objParent, QString::fromStdString(strControl));
        ++iNumber;
        CPageBuilder::NameAfter(*objField, p_bNumbered
                                               ? p_strCaption + QStringLiteral(" %1").arg(iNumber)
                                               : p_strCaption);
        if (p_bNumbered && iNumber > 1) {
            objLine->addWidget(p_objBuilder.MakeLabel(objParent, "."));
        }
        objLine->addWidget(objField, 1);
        if (!p_bNumbered || iNumber == 1) {
            lbl->setBuddy(
                objField);  // the port's number at last; whether it counts comes before it
        }
    }
    p_objGrid.addWidget(lbl, p_iRow, 0);
    p_objGrid.addLayout(objLine, p_iRow, 1);
    if (p_bNumbered) {
        std::vector<UCSpinEdit*> objParts;
        objParts.reserve(p_strControls.size());
        for (const std::string& strControl : p_strControls) {
            objParts.push_back(
                &MControl::Find<UCSpinEdit>(*objParent, QString::fromStdString(strControl)));
        }
        new CAddressParts(objParts, objParent);
    }
}

/// The network settings, a line each.
int AddSettings(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid) {
    int iRow = 0;
    std::vector<std::string> strBefore;
    for (const MSettingControls::Row& objRow : MSettingControls::Lan()) {
        const QString strCaption = MSettingControls::Caption(objRow);
        if (objRow.m_strSetting == SocketSetting) {
            strBefore = MSettingControls::Controls(objRow);
        } else if (objRow.m_strSetting == SocketPortSetting) {
            strBefore.push_back(objRow.m_strControl);
            AddLine(p_objBuilder, p_objGrid, iRow++, strCaption, strBefore, false);
        } else if (MSettingControls::Setting(objRow).m_iKind == MSettings::Kind::Address) {
            AddLine(p_objBuilder, p_objGrid, iRow++, strCaption, MSettingControls::Controls(objRow),
                    true);
        } else {
            p_objBuilder.AddField(p_objGrid, iRow++, 0, strCaption,
                                  QString::fromStdString(objRow.m_strControl));
        }
    }
    return iRow;
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
    m_objBaseline.emplace(m_objBinding->Controls());
    m_objMarks.emplace(*this, *m_objBaseline);
    MSettingNotes::Tell(*this, MSettingControls::Lan());
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
    const int iRow = AddSettings(p_objBuilder, *objGrid);
    auto* const objLine = new QHBoxLayout;
    for (const Named& objButton : PageButtons) {
        objLine->addWidget(
            p_objBuilder.MakeButton(Fr, objButton.m_strName, objButton.m_strCaption));
    }
    objLine->addStretch(1);
    objGrid->addLayout(objLine, iRow, 0, 1, 2);
    return Fr;
}
