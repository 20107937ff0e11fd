#pragma once

#include "model/CItemManager.h"

#include <cstdint>
#include <string>

/// Where on the network a printer is by its settings.
struct CPlace {
    std::string m_strAddress;   ///< four numbers and dots, such as 192.168.10.20; not looked at
    std::uint32_t m_iPort = 0;  ///< may be more than a port can be
    bool m_bSocket = true;      ///< connections are taken at all

    /// The place that the settings of p_objItems name.
    static CPlace Of(const CItemManager& p_objItems);

    bool operator==(const CPlace&) const = default;
};
