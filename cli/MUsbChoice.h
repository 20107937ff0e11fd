#pragma once

#include "cli/CTarget.h"
#include "platform/IUsbPrinterLister.h"

#include <functional>
#include <string>
#include <vector>

/// Which of the printers on USB a target means.
namespace MUsbChoice {

/// How a target names a printer: "usb:1-2.3"; "usb" where the way to it is not known.
std::string TargetOf(const CUsbPrinterEntry& p_objEntry);

/// True for a printer of another maker.
using IsForeign = std::function<bool(const CUsbPrinterEntry&)>;

/// The one of p_objEntries that p_objTarget, one of Link::Usb, means: the one at its port or with
/// its serial number, or the only one. p_fnIsForeign is asked, once for each, only while several
/// could be meant. Throws CCommandError, NotReachable, which lists those that could be meant, when
/// that is none or more than one.
CUsbPrinterEntry Choose(const CTarget& p_objTarget,
                        const std::vector<CUsbPrinterEntry>& p_objEntries,
                        const IsForeign& p_fnIsForeign);

}  // namespace MUsbChoice
