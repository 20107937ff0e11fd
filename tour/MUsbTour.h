#pragma once

#include <QString>

#include <string>
#include <vector>

/// The tour's stops on USB. They need the simulator's emulated system, which is made for one
/// program: this one runs itself there, with "--usb".
namespace MUsbTour {

/// Runs this program inside, prints what it and the simulator say, and compares the commands that
/// the one claims to have sent with those that the other has received.
/// @return the exit code for the program's end.
int RunInside(const QString& p_strPictures);

/// Inside: prints a claim that these commands have just been sent.
void TellSent(const std::vector<std::string>& p_strCommands);

}  // namespace MUsbTour
