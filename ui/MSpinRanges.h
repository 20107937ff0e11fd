#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

class QWidget;
class UCSpinEdit;

/// The ranges of every spin edit of the main window.
namespace MSpinRanges {

struct Row {
    std::string_view m_strName;  ///< the control's name
    std::int32_t m_iInitial;     ///< like the bounds in units of the last shown decimal place
    std::int32_t m_iMax;
    std::int32_t m_iMin;
    std::int32_t m_iIncrement;
    std::optional<std::int16_t> m_iLength;        ///< absent: the control's default
    std::optional<std::int16_t> m_iDecimalPoint;  ///< absent: the control's default
    std::optional<bool> m_bHexaMode;              ///< absent: the control's default
    bool m_bEditCovers;  ///< the text box covers the control, which has no buttons then
};

/// One row a spin edit, in the order in which they are set up.
const std::vector<Row>& All();

/// Sets p_objField up as p_objRow says.
void Apply(const Row& p_objRow, UCSpinEdit& p_objField);

/// Sets every spin edit below p_objWindow up, in the order of the rows. Throws std::logic_error
/// when a row has no spin edit, or a spin edit no row or two.
void ApplyAll(const std::vector<Row>& p_objRows, const QWidget& p_objWindow);

}  // namespace MSpinRanges
