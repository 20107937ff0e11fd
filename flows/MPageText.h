#pragma once

#include "flows/CPageState.h"

/// What a page holds, as the line at the foot of the window says it. Texts are UTF-8.
namespace MPageText {

/// "as read from the printer", "READ ended at group 1: no answer (3 fields changed since read)".
std::string Of(const CPageState& p_objState);

/// The same with p_strWarning of what SET would do in front.
std::string Of(const CPageState& p_objState, const std::string& p_strWarning);

/// Why something that moves no settings has failed: "RAM clear ended: no answer"; empty when it has
/// not.
std::string Failed(const std::string& p_strName, const CFailure& p_objFailure);

/// What stands for a network address and a port, and for whether the printer listens there.
struct Place {
    std::string m_strAddress;  ///< "192.168.10.20"
    std::string m_strPort;     ///< "8000"
    bool m_bListens = true;
};

/// That SET takes the printer from where the tool talks to it to another place; empty when the two
/// are the same.
std::string Move(const Place& p_objFrom, const Place& p_objTo);

}  // namespace MPageText
