#include "link/CAnswerAssembler.h"

#include "protocol/MAnswer.h"

CAnswerAssembler::Result CAnswerAssembler::Append(std::uint8_t p_iByte,
                                                  std::size_t p_iSettingsLength) {
    if (m_bComplete) {
        m_objAnswer.clear();
        m_bComplete = false;
    }
    if (m_objAnswer.empty() && p_iByte != MAnswer::StatusHead && p_iByte != MAnswer::SettingsHead) {
        const bool bFirst = !m_bUnknown;
        m_bUnknown = true;
        return bFirst ? Result::Unknown : Result::Nothing;
    }
    m_bUnknown = false;
    m_objAnswer.push_back(p_iByte);
    if (m_objAnswer.front() != MAnswer::StatusHead) {
        return AppendSettings(p_iSettingsLength);
    }
    m_bComplete = m_objAnswer.size() >= static_cast<std::size_t>(MAnswer::StatusLength);
    return m_bComplete ? Result::Status : Result::Nothing;
}

CAnswerAssembler::Result CAnswerAssembler::AppendSettings(std::size_t p_iSettingsLength) {
    switch (MAnswer::JudgePart(m_objAnswer, p_iSettingsLength)) {
    case MAnswer::Frame::Open:
        return Result::Nothing;
    case MAnswer::Frame::Doubtful:
        m_iDoubtfulLength = p_iSettingsLength;
        return Result::Nothing;
    case MAnswer::Frame::Foreign:
        Clear();
        return Result::Nothing;
    case MAnswer::Frame::Whole:
        break;
    }
    if (!Settle()) {
        m_bComplete = true;
    }
    return Result::Settings;
}

bool CAnswerAssembler::Settle() {
    if (!IsDoubtful()) {
        return false;
    }
    m_objAnswer.resize(m_iDoubtfulLength);
    m_iDoubtfulLength = 0;
    m_bComplete = true;
    return true;
}

void CAnswerAssembler::Clear() {
    m_objAnswer.clear();
    m_iDoubtfulLength = 0;
    m_bComplete = false;
    m_bUnknown = false;
}
