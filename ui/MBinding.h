#pragma once

#include "model/CItemManager.h"

#include <cstdint>
#include <string>
#include <vector>

/// Which control shows which item, one row a control, in the order in which the pages visit them.
namespace MBinding {

/// How a control and its item take each other's value.
enum class Kind : std::uint8_t {
    List,        ///< the item's value is the list's position
    SpinEdit,    ///< the spin edit holds the item's value
    SignedPair,  ///< the spin edit holds a direction item and a magnitude item together
    TextBox,     ///< the box holds the item's text
};

struct Row {
    std::string m_strControl;
    Kind m_iKind = Kind::List;
    ItemRef CItemManager::*m_objItem = nullptr;       ///< of a signed pair the magnitude
    ItemRef CItemManager::*m_objDirection = nullptr;  ///< of a signed pair only
};

/// The Parameter Setting page. Like Lan it throws std::logic_error when a control's setting does
/// not exist.
std::vector<Row> ParameterSetting();

/// The Extra Setting page. The DHCP client identifier has no control.
std::vector<Row> Lan();

}  // namespace MBinding
