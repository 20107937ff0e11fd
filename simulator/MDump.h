#pragma once

#include "simulator/CJsonObject.h"
#include "simulator/CPrinter.h"

/// A printer's own word on its settings, for programs that want to compare.
namespace MDump {

/// The members:
///
///     "power"      whether the printer has power
///     "settings"   an object: every setting by its name (FeedAdjustment, IpAddress1 …), a text as
///                  it stands in a set command, in the catalogue's order
///     "answers"    the answers to a read of the groups 0 to 4, as they would pass on a network
///
/// The font code of "settings" has the number with which it is set, that of "answers" the number
/// that the printer gives it itself.
CJsonObject Of(const CPrinter& p_objPrinter);

}  // namespace MDump
