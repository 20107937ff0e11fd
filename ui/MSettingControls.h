#pragma once

#include "model/MSettings.h"

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Which controls show which setting, one row a setting, in the order in which the pages visit
/// them. What a control shows of it (label, entries, range) is the setting's own.
namespace MSettingControls {

/// Where on its page a setting stands.
enum class Place : std::uint8_t {
    Parameter,   ///< among the parameters
    Codes,       ///< behind the list "code", which decides whether it counts
    Adjustment,  ///< among the adjustments
    Lan,         ///< in a line of the network settings
};

struct Row {
    std::string_view m_strSetting;
    std::string m_strControl;  ///< of an address what its four names begin with
    Place m_iPlace = Place::Parameter;
    bool m_bEditCovers = false;  ///< a spin edit whose text box covers it, without buttons
};

/// The Parameter Setting page, within a place in reading order.
const std::vector<Row>& ParameterSetting();

/// The Extra Setting page. Some network settings have no control.
const std::vector<Row>& Lan();

/// The row's setting. Throws std::logic_error, which names it, when there is none.
const MSettings::Row& Setting(const Row& p_objRow);

/// The names of the row's controls: of an address four, with 1 to 4 at the end.
std::vector<std::string> Controls(const Row& p_objRow);

/// The setting's label as a label's text, in which "&&" shows as "&".
QString Caption(const Row& p_objRow);

}  // namespace MSettingControls
