#pragma once

#include "model/MSettings.h"

#include <cstdint>
#include <string>
#include <vector>

class QWidget;
class UCSpinEdit;

/// The ranges of every spin edit of the main window: a setting's are the setting's own.
namespace MSpinRanges {

struct Row {
    std::string m_strName;    ///< the control's name
    std::int32_t m_iInitial;  ///< like the bounds in units of the last shown decimal place
    MSettings::Range m_objRange;
    bool m_bEditCovers = false;  ///< the text box covers the control, which has no buttons then
};

/// One row a spin edit, in the order in which they are set up. Throws std::logic_error when a
/// control's setting does not exist.
std::vector<Row> All();

/// Sets p_objField up as p_objRow says.
void Apply(const Row& p_objRow, UCSpinEdit& p_objField);

/// Sets every spin edit below p_objWindow up, in the order of the rows. Throws std::logic_error
/// when a row has no spin edit, or a spin edit no row or two.
void ApplyAll(const std::vector<Row>& p_objRows, const QWidget& p_objWindow);

}  // namespace MSpinRanges
