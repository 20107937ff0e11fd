#include "ui/MListEntries.h"

#include "model/MChoiceLists.h"
#include "platform/qt/MText.h"
#include "ui/MControl.h"
#include "ui/MSettingControls.h"

namespace {

struct Choice {
    const char* m_strControl;
    std::string_view m_strChoice;  ///< of the maintenance functions, in MChoiceLists
};

// clang-format off
const std::vector<Choice> Choices{
    {"cmbDiagPrint", "diag-print-type"},
    {"cmbPattern", "test-print-pattern"},
    {"cmbPrintSpeed", "test-print-speed"},
    {"cmbSensor", "test-print-sensor"},
    {"cmbType", "test-print-cut"},
    {"cmbPrtType", "test-print-type"},
    {"cmbThresholdCalib", "threshold-sensor"},
    {"cmbRamClear", "ram-clear-mode"},
    {"cmbDestination", "ram-clear-destination"},
};
// clang-format on

void AppendSettings(const std::vector<MSettingControls::Row>& p_objControls,
                    std::vector<MListEntries::List>& p_objLists) {
    for (const MSettingControls::Row& objRow : p_objControls) {
        const MSettings::Row& objSetting = MSettingControls::Setting(objRow);
        if (objSetting.m_iKind == MSettings::Kind::List) {
            p_objLists.push_back({objRow.m_strControl, objSetting.m_strEntries});
        }
    }
}

void AppendChoices(std::vector<MListEntries::List>& p_objLists) {
    for (const Choice& objChoice : Choices) {
        const MChoiceLists::List& objList = MChoiceLists::Get(objChoice.m_strChoice);
        p_objLists.push_back(
            {objChoice.m_strControl, objList.m_strEntries, objList.m_iStartPosition});
    }
}

void FillOne(const MListEntries::List& p_objList, QComboBox& p_cmb) {
    if (p_cmb.count() > 0) {
        throw std::logic_error(MControl::Text(p_cmb) + " is filled twice");
    }
    for (const std::string_view strEntry : p_objList.m_strEntries) {
        p_cmb.addItem(MText::ToQt(std::string(strEntry)));
    }
    if (p_objList.m_iStartPosition < MListEntries::NoSelection ||
        p_objList.m_iStartPosition >= p_cmb.count()) {
        throw std::logic_error(MControl::Text(p_cmb) + " has no position " +
                               std::to_string(p_objList.m_iStartPosition));
    }
    p_cmb.setCurrentIndex(p_objList.m_iStartPosition);
}

}  // namespace

std::vector<MListEntries::List> MListEntries::All() {
    std::vector<List> objLists;
    AppendSettings(MSettingControls::ParameterSetting(), objLists);
    AppendChoices(objLists);
    AppendSettings(MSettingControls::Lan(), objLists);
    return objLists;
}

void MListEntries::Fill(const std::vector<MListEntries::List>& p_objLists,
                        const QWidget& p_objWindow) {
    for (const MListEntries::List& objList : p_objLists) {
        FillOne(objList, MControl::Find<QComboBox>(p_objWindow, QLatin1String(objList.m_strName)));
    }
    for (const QComboBox* const cmb : MControl::All<QComboBox>(p_objWindow)) {
        if (cmb->count() == 0) {
            throw std::logic_error(MControl::Text(*cmb) + " has no entries");
        }
    }
}
