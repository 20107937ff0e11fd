#include "cli/MAccessText.h"

namespace {

using MAccessText::Device;
using Texts = CCommandError::Texts;

/// The group that devices of a kind belong to where the system is set up for it.
std::string UsualGroup(Device p_iDevice) {
    return p_iDevice == Device::SerialPort ? "dialout" : "lp";
}

std::string Join(const std::string& p_strGroup) {
    return "join the group " + p_strGroup + " (sudo adduser $USER " + p_strGroup +
           "), then log in again";
}

std::string WayIn(Device p_iDevice, const CDeviceState& p_objState) {
    if (p_objState.m_bMember) {
        return "you are in the group " + p_objState.m_strGroup + " already: log in again";
    }
    if (!p_objState.m_strGroup.empty()) {
        return Join(p_objState.m_strGroup);
    }
    const std::string strGive = p_iDevice == Device::UsbPrinter
                                    ? "put 70-varden-printer.rules into /etc/udev/rules.d and plug "
                                      "the printer in again"
                                    : "let an administrator give it to a group";
    return strGive + "; " + Join(UsualGroup(p_iDevice));
}

}  // namespace

namespace MAccessText {

std::optional<Texts> Problem(const std::string& p_strDevice, Device p_iDevice,
                             const CDeviceState& p_objState) {
    switch (p_objState.m_iUse) {
    case CDeviceState::Use::Possible:
        break;
    case CDeviceState::Use::Missing:
        return Texts{
            "There is no " + p_strDevice, {}, p_strDevice, "varden ports shows what is plugged in"};
    case CDeviceState::Use::Forbidden:
        return Texts{
            "No permission for " + p_strDevice, {}, p_strDevice, WayIn(p_iDevice, p_objState)};
    case CDeviceState::Use::Held:
        return Texts{p_strDevice + " is in use",
                     p_objState.m_strHolder.empty() ? "another program has it"
                                                    : p_objState.m_strHolder + " has it",
                     p_strDevice, "end that program, or wait until it is done"};
    }
    return std::nullopt;
}

}  // namespace MAccessText
