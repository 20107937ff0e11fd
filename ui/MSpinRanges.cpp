#include "ui/MSpinRanges.h"

#include "model/MNumber.h"
#include "ui/MControl.h"
#include "ui/MSettingControls.h"
#include "ui/UCSpinEdit.h"

namespace {

using MSpinRanges::Row;

// What a test print takes is no setting of the printer.
// clang-format off
const std::vector<Row> TestPrint{
    {"SeIssueCount", 1, {1, 5000, 1}},
    {"SeLabelLen", 760, {100, 9999, 1, 4}},
};
// clang-format on

void Append(const std::vector<MSettingControls::Row>& p_objControls, std::vector<Row>& p_objRows) {
    const CItemManager objDefaults;
    for (const MSettingControls::Row& objRow : p_objControls) {
        const MSettings::Row& objSetting = MSettingControls::Setting(objRow);
        if (objSetting.m_iKind != MSettings::Kind::Number &&
            objSetting.m_iKind != MSettings::Kind::Address) {
            continue;
        }
        std::size_t iSlot = 0;
        for (const std::string& strControl : MSettingControls::Controls(objRow)) {
            const CItem& objItem = *(objDefaults.*objSetting.m_objSlots.at(iSlot++));
            p_objRows.push_back({strControl, MNumber::ToInt32(objItem.GetValue(true)),
                                 objSetting.m_objRange, objRow.m_bEditCovers});
        }
    }
}

}  // namespace

namespace MSpinRanges {

std::vector<Row> All() {
    std::vector<Row> objRows;
    Append(MSettingControls::ParameterSetting(), objRows);
    objRows.insert(objRows.end(), TestPrint.begin(), TestPrint.end());
    Append(MSettingControls::Lan(), objRows);
    return objRows;
}

void Apply(const Row& p_objRow, UCSpinEdit& p_objField) {
    if (p_objRow.m_bEditCovers) {
        p_objField.SetEditWidth(p_objField.width());
    }
    const MSettings::Range& objRange = p_objRow.m_objRange;
    p_objField.InitializeSpinEdit(p_objRow.m_iInitial, objRange.m_iMax, objRange.m_iMin,
                                  objRange.m_iStep, objRange.m_iLength, objRange.m_iDecimals,
                                  objRange.m_bHexa);
}

void ApplyAll(const std::vector<Row>& p_objRows, const QWidget& p_objWindow) {
    for (const Row& objRow : p_objRows) {
        Apply(objRow, MControl::Find<UCSpinEdit>(p_objWindow, QLatin1String(objRow.m_strName)));
    }
    MControl::ExpectOneRowEach<UCSpinEdit>(
        p_objWindow, p_objRows,
        [](const Row& p_objRow) -> const std::string& { return p_objRow.m_strName; }, "ranges");
}

}  // namespace MSpinRanges
