#pragma once

#include "tour/CTour.h"

/// The tool's jobs over the links other than the LAN.
namespace MLinkTour {

/// Starts a printer at the serial port COM1, connects to it by way of Setup, and goes through READ,
/// SET, a status request and a head check. The port is closed and the printer gone at the end.
void Serial(CTour& p_objTour);

/// The same with the printer on USB, which must be plugged in and fresh: this program runs inside
/// the simulator's emulated system. What passes on the wire is for the simulator to print and for
/// MUsbTour to compare.
void Usb(CTour& p_objTour);

}  // namespace MLinkTour
