#pragma once

#include <QString>

/// The walk that docs/walk-through.md shows.
namespace MWalk {

/// Writes the page and its pictures into p_strFolder: the serial port and the LAN, then USB in a
/// program of its own.
/// @return the exit code for the program's end.
int Run(const QString& p_strFolder);

/// The part on USB, inside of the simulator's emulated system.
int RunOnUsb(const QString& p_strFolder);

}  // namespace MWalk
