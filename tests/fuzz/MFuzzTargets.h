#pragma once

#include "tests/fuzz/MFuzz.h"

/// The targets: each takes any bytes for what comes from outside, and ends the program when
/// something does not hold that has to. Their names stand in Main.cpp.
namespace MFuzzTargets {

// Files. The window's two kinds, and the command line's own.
void ParameterFile(MFuzz::Input p_objInput);
void LanFile(MFuzz::Input p_objInput);
void JsonFile(MFuzz::Input p_objInput);

// What a printer sends, link by link, and the fields of an answer.
void LanStream(MFuzz::Input p_objInput);
void SerialLine(MFuzz::Input p_objInput);
void UsbAnswer(MFuzz::Input p_objInput);
void DeviceId(MFuzz::Input p_objInput);
void Distribute(MFuzz::Input p_objInput);

// A command line: the printer that it names, the words that say what to set.
void Target(MFuzz::Input p_objInput);
void Words(MFuzz::Input p_objInput);

/// What a client sends to the simulated printer.
void CommandReader(MFuzz::Input p_objInput);

/// Everything at once: the window's handlers over all links.
void Exchange(MFuzz::Input p_objInput);

}  // namespace MFuzzTargets
