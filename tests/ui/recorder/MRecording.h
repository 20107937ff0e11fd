#pragma once

#include "tests/ui/recorder/CStage.h"

#include <string>
#include <vector>

/// The recordings of the window: which there are, how one is made, and where two differ.
///
/// A recording is a text: for each cell a heading, a line that begins with "== ", and under it a
/// line for each thing that happened. The files of them have names for the settings that travel
/// (CSettingsTexts), and the table of those is a file of its own.
namespace MRecording {

/// The names of all recordings: each flow has one, by its button, and two those in which others
/// are pressed inside a flow.
const std::vector<std::string>& Names();

/// The name of the table of the settings.
inline constexpr const char* SettingsName = "settings";

/// The cells of one of them.
Cells CellsOf(const std::string& p_strName);

/// Plays all cells of a recording. The whole text.
std::string Make(CStage& p_objStage, const std::string& p_strName);

/// What tells two recordings of the same name apart, for people: how many cells differ, and of the
/// first both texts and the first line that differs. Empty when they are the same.
std::string Difference(const std::string& p_strBefore, const std::string& p_strNow);

}  // namespace MRecording
