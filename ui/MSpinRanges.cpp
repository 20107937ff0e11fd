#include "ui/MSpinRanges.h"

#include "ui/MControl.h"
#include "ui/UCSpinEdit.h"

namespace {

constexpr auto Default = std::nullopt;

// The adjustments of the ribbon motors end at 0: their direction is "-" whatever is entered.
// clang-format off
const std::vector<MSpinRanges::Row> Ranges{
    {"SeFowardPosition", 0, 50, -50, 5, 5, 1, Default, false},
    {"SeCode1", 27, 255, 0, 1, 5, 0, true, true},
    {"SeCode2", 10, 255, 0, 1, 5, 0, true, true},
    {"SeCode3", 0, 255, 0, 1, 5, 0, true, true},
    {"SeEuroCode", 176, 255, 32, 1, 5, 0, true, false},
    {"SeFeedAdj", 0, 500, -500, 1, 5, 1, Default, false},
    {"SeCutAdj", 0, 500, -500, 1, 5, 1, Default, false},
    {"SeBackAdj", 0, 95, -95, 1, 5, 1, Default, false},
    {"SeXAdj", 0, 995, -995, 5, 5, 1, Default, false},
    {"SeToneAdjT", 0, 10, -10, 1, 5, 0, Default, false},
    {"SeToneAdjD", 0, 10, -10, 1, 5, 0, Default, false},
    {"SeRbnAdjFw", 0, 0, -15, 1, 3, 0, Default, false},
    {"SeRbnAdjBk", 0, 0, -15, 1, 3, 0, Default, false},
    {"SeThresholdR", 10, 40, 0, 1, 4, 1, Default, false},
    {"SeThresholdT", 14, 40, 0, 1, 4, 1, Default, false},
    {"SeIssueCount", 1, 5000, 1, 1, Default, Default, Default, false},
    {"SeLabelLen", 760, 9999, 100, 1, 4, Default, Default, false},
    {"SeIpAddress1", 192, 255, 0, 1, 3, 0, Default, true},
    {"SeIpAddress2", 168, 255, 0, 1, 3, 0, Default, true},
    {"SeIpAddress3", 10, 255, 0, 1, 3, 0, Default, true},
    {"SeIpAddress4", 20, 255, 0, 1, 3, 0, Default, true},
    {"SeSubNet1", 255, 255, 0, 1, 3, 0, Default, true},
    {"SeSubNet2", 255, 255, 0, 1, 3, 0, Default, true},
    {"SeSubNet3", 255, 255, 0, 1, 3, 0, Default, true},
    {"SeSubNet4", 0, 255, 0, 1, 3, 0, Default, true},
    {"SeGateway1", 0, 255, 0, 1, 3, 0, Default, true},
    {"SeGateway2", 0, 255, 0, 1, 3, 0, Default, true},
    {"SeGateway3", 0, 255, 0, 1, 3, 0, Default, true},
    {"SeGateway4", 0, 255, 0, 1, 3, 0, Default, true},
    {"SeSocetPort", 8000, 65535, 0, 1, 5, Default, Default, false},
};
// clang-format on

}  // namespace

namespace MSpinRanges {

const std::vector<Row>& All() {
    return Ranges;
}

void Apply(const Row& p_objRow, UCSpinEdit& p_objField) {
    if (p_objRow.m_bEditCovers) {
        p_objField.SetEditWidth(p_objField.width());
    }
    p_objField.InitializeSpinEdit(
        p_objRow.m_iInitial, p_objRow.m_iMax, p_objRow.m_iMin, p_objRow.m_iIncrement,
        p_objRow.m_iLength.value_or(UCSpinEdit::NoLengthLimit),
        p_objRow.m_iDecimalPoint.value_or(0), p_objRow.m_bHexaMode.value_or(false));
}

void ApplyAll(const std::vector<Row>& p_objRows, const QWidget& p_objWindow) {
    for (const Row& objRow : p_objRows) {
        Apply(objRow, MControl::Find<UCSpinEdit>(p_objWindow, QLatin1String(objRow.m_strName)));
    }
    MControl::ExpectOneRowEach<UCSpinEdit>(
        p_objWindow, p_objRows, [](const Row& p_objRow) { return p_objRow.m_strName; }, "ranges");
}

}  // namespace MSpinRanges
