#pragma once

#include <cstdint>
#include <string>

/// Whether a device file can be used, and if not, why.
struct CDeviceState {
    enum class Use : std::uint8_t {
        Possible,
        Missing,    ///< there is no such device
        Forbidden,  ///< this user may not
        Held,       ///< another program has it
    };

    Use m_iUse = Use::Possible;
    std::string m_strGroup;   ///< whose members may use it, when forbidden; empty: no group's
    bool m_bMember = false;   ///< this user belongs to the group, but has not logged in since
    std::string m_strHolder;  ///< who has it, "minicom (4711)", as far as the system tells
};

/// Tells whether device files can be used. Opens none.
class IDeviceAccess {
public:
    virtual ~IDeviceAccess() = default;

    [[nodiscard]] virtual CDeviceState Look(const std::string& p_strDevice) const = 0;
};
