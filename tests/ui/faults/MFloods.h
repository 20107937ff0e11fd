#pragma once

#include "tests/ui/recorder/CScene.h"

#include <cstddef>
#include <string>

/// More bytes than anybody has asked for, past the transcript: nobody wants to read them.
namespace MFloods {

/// Bytes that begin no answer on any link.
std::string Junk(std::size_t p_iBytes);

/// Bytes of all kinds, always the same.
std::string Chance(std::size_t p_iBytes);

/// They arrive at once, on the scene's link.
void Pour(CScene& p_objScene, const std::string& p_strBytes);

/// They arrive again and again, with every round of the event loop, until the scene is sound.
void Begin(CScene& p_objScene, const std::string& p_strBytes);

}  // namespace MFloods
