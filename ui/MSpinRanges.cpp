#include "ui/MSpinRanges.h"

#include "model/MChoiceLists.h"
#include "model/MNumber.h"
#include "ui/MControl.h"
#include "ui/MSettingControls.h"
#include "ui/UCSpinEdit.h"

namespace {

using MSpinRanges::Row;

/// What a test print takes is no setting of the printer.
Row TestPrint(const char* p_strControl, std::string_view p_strChoice) {
    const MChoiceLists::Number& objNumber = MChoiceLists::GetNumber(p_strChoice);
    return {p_strControl, objNumber.m_iStart, objNumber.m_objRange};
}

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
    objRows.push_back(TestPrint("SeIssueCount", "test-print-issue-count"));
    objRows.push_back(TestPrint("SeLabelLen", "test-print-label-length"));
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
