#include "link/CSerialReceiver.h"

#include "protocol/MAnswer.h"

#include <algorithm>

namespace {

constexpr std::uint8_t Xon = 0x11;
constexpr std::uint8_t Xoff = 0x13;
constexpr std::uint8_t HighestCharacter = 128;

/// Longer than any answer: a frame that grows to this is none.
constexpr std::size_t LongestFrame = 256;

}  // namespace

CSerialReceiver::Result CSerialReceiver::Take(std::uint8_t p_iCharacter,
                                              std::int16_t p_iExpectedLength) {
    switch (p_iCharacter) {
    case MAnswer::StatusHead:
        Begin(Open::Status);
        return Result::Nothing;
    case MAnswer::SettingsHead:
        Begin(Open::Settings);
        return Result::Nothing;
    case Xoff:
        m_bXoffSeen = true;
        return Result::Nothing;
    case Xon:
        m_bXonSeen = true;
        return Result::Nothing;
    default:
        break;
    }
    if (m_iOpen == Open::None || p_iCharacter > HighestCharacter) {
        return Result::Nothing;
    }
    return Append(p_iCharacter, p_iExpectedLength);
}

void CSerialReceiver::Begin(Open p_iFrame) {
    m_objBuffer.assign(1, 0);
    m_iDoubtfulLength = 0;
    m_iOpen = p_iFrame;
}

CSerialReceiver::Result CSerialReceiver::Append(std::uint8_t p_iCharacter,
                                                std::int16_t p_iExpectedLength) {
    m_objBuffer.push_back(p_iCharacter);
    if (m_iOpen == Open::Status && m_objBuffer.size() == MAnswer::StatusLength) {
        m_iOpen = Open::None;
        return Result::Status;
    }
    if (m_iOpen == Open::Settings && AppendSettings(p_iExpectedLength) == Result::Settings) {
        return Result::Settings;
    }
    m_objState.m_iPendingAnswers = 0;
    if (m_objBuffer.size() >= LongestFrame) {
        m_iOpen = Open::None;
    }
    return Result::Nothing;
}

CSerialReceiver::Result CSerialReceiver::AppendSettings(std::int16_t p_iExpectedLength) {
    const auto iLength = static_cast<std::size_t>(std::max<std::int16_t>(p_iExpectedLength, 0)) / 2;
    const bool bAtLength = m_objBuffer.size() == iLength;
    switch (MAnswer::JudgePart(m_objBuffer, iLength)) {
    case MAnswer::Frame::Open:
        return Result::Nothing;
    case MAnswer::Frame::Doubtful:
        m_iDoubtfulLength = bAtLength ? iLength : m_iDoubtfulLength;
        return Result::Nothing;
    case MAnswer::Frame::Foreign:
        m_iDoubtfulLength = 0;
        m_iOpen = Open::None;
        return Result::Nothing;
    case MAnswer::Frame::Whole:
        break;
    }
    if (Settle()) {
        return Result::Settings;
    }
    // An expectation that has shrunk past what is there completes nothing.
    return bAtLength ? CloseSettings() : Result::Nothing;
}

bool CSerialReceiver::Settle() {
    if (!IsDoubtful()) {
        return false;
    }
    m_objBuffer.resize(m_iDoubtfulLength);
    CloseSettings();
    return true;
}

CSerialReceiver::Result CSerialReceiver::CloseSettings() {
    m_iDoubtfulLength = 0;
    m_iOpen = Open::None;
    ++m_objState.m_iPendingAnswers;
    return Result::Settings;
}
