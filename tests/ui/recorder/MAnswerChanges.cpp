#include "tests/ui/recorder/MAnswerChanges.h"

#include <algorithm>

namespace {

using MAnswerChanges::Hand;

constexpr std::int64_t Soon = 100;
constexpr std::int64_t HalfASecond = 500;
constexpr std::int64_t BetweenHalves = 600;
constexpr std::int64_t BetweenBytes = 5;

constexpr int Groups = 5;
constexpr std::size_t GroupPosition = 4;  // in "{Z5;0|}"

CScriptedWire::Step Event(const Hand& p_objHand, std::int64_t p_iAt, void (*p_fnEvent)(CScene&)) {
    return {p_iAt, {}, [&objScene = p_objHand.m_objScene, p_fnEvent] { p_fnEvent(objScene); }};
}

}  // namespace

namespace MAnswerChanges {

void Replace(const Hand& p_objHand, const std::string& p_strBytes) {
    p_objHand.Answer() = p_strBytes;
}

void ReplaceByStatus(const Hand& p_objHand, const char* p_strCode) {
    p_objHand.Answer() = p_objHand.m_objScene.m_objWire.StatusAnswer(p_strCode);
}

void Precede(const Hand& p_objHand, const std::string& p_strBytes) {
    const CScriptedWire::Step objFirst{p_objHand.m_objSteps.front().m_iAt, p_strBytes, nullptr};
    p_objHand.m_objSteps.front().m_iAt += HalfASecond;
    p_objHand.m_objSteps.insert(p_objHand.m_objSteps.begin(), objFirst);
}

std::string NextGroup(const Hand& p_objHand) {
    const int iNext = (p_objHand.m_strCommand[GroupPosition] - '0' + 1) % Groups;
    return p_objHand.m_objScene.m_objWire.SettingsAnswer(static_cast<std::int16_t>(iNext));
}

void FillFields(const Hand& p_objHand, char p_cCharacter) {
    std::string& strAnswer = p_objHand.Answer();
    const std::size_t iFields = strAnswer.find('{') + 2;
    std::fill(strAnswer.begin() + static_cast<std::ptrdiff_t>(iFields), strAnswer.end() - 2,
              p_cCharacter);
}

void ByteByByte(const Hand& p_objHand) {
    const std::string strAnswer = p_objHand.Answer();
    std::int64_t iAt = p_objHand.m_objSteps.front().m_iAt;
    p_objHand.m_objSteps.clear();
    for (const char cByte : strAnswer) {
        p_objHand.m_objSteps.push_back({iAt, std::string(1, cByte), nullptr});
        iAt += BetweenBytes;
    }
}

void Halve(const Hand& p_objHand, std::int64_t p_iBetween) {
    const std::string strAnswer = p_objHand.Answer();
    const std::size_t iHalf = strAnswer.size() / 2;
    p_objHand.Answer().resize(iHalf);
    p_objHand.m_objSteps.push_back(
        {p_objHand.m_objSteps.front().m_iAt + p_iBetween, strAnswer.substr(iHalf), nullptr});
}

void DoBefore(const Hand& p_objHand, void (*p_fnEvent)(CScene&)) {
    p_objHand.m_objSteps.insert(p_objHand.m_objSteps.begin(),
                                Event(p_objHand, p_objHand.m_objSteps.front().m_iAt, p_fnEvent));
    p_objHand.m_objSteps.back().m_iAt += Soon;
}

void DoInside(const Hand& p_objHand, void (*p_fnEvent)(CScene&)) {
    const std::int64_t iAt = p_objHand.m_objSteps.front().m_iAt;
    Halve(p_objHand, BetweenHalves);
    p_objHand.m_objSteps.insert(p_objHand.m_objSteps.begin() + 1,
                                Event(p_objHand, iAt + BetweenHalves / 2, p_fnEvent));
}

void DoBehind(const Hand& p_objHand, void (*p_fnEvent)(CScene&)) {
    p_objHand.m_objSteps.push_back(
        Event(p_objHand, p_objHand.m_objSteps.back().m_iAt + HalfASecond, p_fnEvent));
}

}  // namespace MAnswerChanges
