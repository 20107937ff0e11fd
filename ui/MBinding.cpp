#include "ui/MBinding.h"

#include "ui/MSettingControls.h"

namespace {

using MBinding::Kind;
using MBinding::Row;

Kind KindOf(const MSettings::Row& p_objSetting) {
    switch (p_objSetting.m_iKind) {
    case MSettings::Kind::List:
        return Kind::List;
    case MSettings::Kind::Text:
        return Kind::TextBox;
    case MSettings::Kind::Number:
    case MSettings::Kind::Address:
        break;
    }
    return p_objSetting.m_objDirection != nullptr ? Kind::SignedPair : Kind::SpinEdit;
}

std::vector<Row> RowsOf(const std::vector<MSettingControls::Row>& p_objControls) {
    std::vector<Row> objRows;
    for (const MSettingControls::Row& objRow : p_objControls) {
        const MSettings::Row& objSetting = MSettingControls::Setting(objRow);
        std::size_t iSlot = 0;
        for (const std::string& strControl : MSettingControls::Controls(objRow)) {
            objRows.push_back({strControl, KindOf(objSetting), objSetting.m_objSlots.at(iSlot++),
                               objSetting.m_objDirection});
        }
    }
    return objRows;
}

}  // namespace

namespace MBinding {

std::vector<Row> ParameterSetting() {
    return RowsOf(MSettingControls::ParameterSetting());
}

std::vector<Row> Lan() {
    return RowsOf(MSettingControls::Lan());
}

}  // namespace MBinding
