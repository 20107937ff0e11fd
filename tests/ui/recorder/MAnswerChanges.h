#pragma once

#include "tests/ui/recorder/CScene.h"

#include <cstdint>
#include <string>

/// What can be made of the right answer to a command before it is given.
namespace MAnswerChanges {

/// An answer before it is given: what is to come back to a command, on which window's link.
struct Hand {
    CScene& m_objScene;
    CScriptedWire::Steps& m_objSteps;  ///< at first one, the right answer
    const std::string& m_strCommand;

    [[nodiscard]] std::string& Answer() const { return m_objSteps.front().m_strBytes; }
};

void Replace(const Hand& p_objHand, const std::string& p_strBytes);
void ReplaceByStatus(const Hand& p_objHand, const char* p_strCode);

/// Something comes first, and the answer half a second after it.
void Precede(const Hand& p_objHand, const std::string& p_strBytes);

/// The settings of the group behind the one that is asked for.
std::string NextGroup(const Hand& p_objHand);

/// The answer with every character of its fields replaced.
void FillFields(const Hand& p_objHand, char p_cCharacter);

void ByteByByte(const Hand& p_objHand);

/// The answer in two halves, so much time between them.
void Halve(const Hand& p_objHand, std::int64_t p_iBetween);

// Something happens before the answer, in its middle, or behind it.
void DoBefore(const Hand& p_objHand, void (*p_fnEvent)(CScene&));
void DoInside(const Hand& p_objHand, void (*p_fnEvent)(CScene&));
void DoBehind(const Hand& p_objHand, void (*p_fnEvent)(CScene&));

}  // namespace MAnswerChanges
