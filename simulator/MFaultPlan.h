#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/CWireStep.h"

#include <cstddef>
#include <string_view>
#include <vector>

/// Turns answers into what is really done on the wire, faults included.
///
/// Faults apply in this order: junk takes the answer's place, what there is now is cut short, junk
/// is put in front, all of it is cut into pieces, the first step is delayed, and the connection is
/// closed behind the last byte. A silent printer sends nothing of it, but still closes.
namespace MFaultPlan {

/// What junk is made of: it neither begins with nor holds a byte that begins an answer.
inline constexpr std::string_view Junk = "~junk\x05\x7F\xFE?";

/// The steps as soon as a connection stands: none, or its closing.
std::vector<CWireStep> AtConnect(const CFaultSettings& p_objFaults);

/// The steps of the answer to a connection's command number p_iCommand, counted from 1.
/// @param p_strNote what the answer is, for people.
std::vector<CWireStep> AtAnswer(const CFaultSettings& p_objFaults, std::size_t p_iCommand,
                                std::string_view p_strAnswer, std::string_view p_strNote);

}  // namespace MFaultPlan
