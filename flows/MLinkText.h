#pragma once

#include "link/CLinkStatus.h"

#include <string>

/// How it stands with the link to the printer, as the line at the foot of the window says it.
namespace MLinkText {

/// "COM1 9600,E,8,1 open", "LAN refused: 192.168.10.20:8000", "USB: no printer"; in UTF-8. Empty
/// for an interface that does not exist.
/// @param p_strPort the serial port of the link settings, "COM1".
std::string Of(const CLinkStatus& p_objStatus, const std::string& p_strPort);

}  // namespace MLinkText
