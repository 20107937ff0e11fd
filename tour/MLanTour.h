#pragma once

#include "tour/CTour.h"
#include "tour/CWire.h"

#include <cstdint>

/// The tool's jobs over the LAN, told step by step.
namespace MLanTour {

/// Shows the About box and each tab as it is after the start.
void LookAround(CTour& p_objTour);

/// Sets the simulated printer up as somebody else would have done before, and connects to it by
/// way of Setup.
void Connect(CTour& p_objTour, CWire& p_objWire, std::uint16_t p_iPort);

/// Reads the printer's settings, changes some, writes them back and reads them again.
void ReadEditSet(CTour& p_objTour, CWire& p_objWire);

/// The same for the network settings.
void LanReadEditSet(CTour& p_objTour, CWire& p_objWire);

/// Asks for the status and runs each maintenance function, the RAM clear last.
void Maintain(CTour& p_objTour, CWire& p_objWire);

}  // namespace MLanTour
