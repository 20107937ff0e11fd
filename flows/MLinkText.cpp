#include "flows/MLinkText.h"

#include "flows/MCauseText.h"
#include "link/CInterface.h"

namespace {

using State = CLinkStatus::State;

std::string Com(const CLinkStatus& p_objStatus, const std::string& p_strPort) {
    const CFailure& objFailure = p_objStatus.m_objFailure;
    if (p_objStatus.m_iState == State::Open) {
        return p_objStatus.m_strWhere + " open";
    }
    // A command that finds the port closed leaves it so.
    if (p_objStatus.m_iState != State::Failed ||
        objFailure.m_iKind == CFailure::Kind::SerialNotOpen) {
        return p_strPort + " closed";
    }
    const std::string& strPort = objFailure.m_strDevice;
    return (strPort.empty() ? p_strPort : strPort) + ": " + MCauseText::Of(objFailure);
}

std::string Lan(const CLinkStatus& p_objStatus) {
    switch (p_objStatus.m_iState) {
    case State::Closed:
        break;
    case State::Opening:
        return "LAN connecting to " + p_objStatus.m_strWhere + " \u2026";
    case State::Open:
        return "LAN connected to " + p_objStatus.m_strWhere;
    case State::ClosedByPrinter:
        return "LAN closed by the printer";
    case State::Failed:
        return "LAN " + MCauseText::Of(p_objStatus.m_objFailure) + ": " + p_objStatus.m_strWhere;
    }
    return "LAN not connected";
}

std::string Usb(const CLinkStatus& p_objStatus) {
    // It is opened and closed with each transfer; nobody wants to see that.
    return p_objStatus.m_iState == State::Failed
               ? "USB: " + MCauseText::Of(p_objStatus.m_objFailure)
               : "USB";
}

}  // namespace

std::string MLinkText::Of(const CLinkStatus& p_objStatus, const std::string& p_strPort) {
    switch (p_objStatus.m_iInterface) {
    case CInterface::SerialInterface:
        return Com(p_objStatus, p_strPort);
    case CInterface::LanInterface:
        return Lan(p_objStatus);
    case CInterface::UsbInterface:
        return Usb(p_objStatus);
    default:
        return {};
    }
}
