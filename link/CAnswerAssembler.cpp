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
    if (!IsComplete(p_iSettingsLength)) {
        return Result::Nothing;
    }
    m_bComplete = true;
    return m_objAnswer.front() == MAnswer::StatusHead ? Result::Status : Result::Settings;
}

bool CAnswerAssembler::IsComplete(std::size_t p_iSettingsLength) const {
    return m_objAnswer.size() >= (m_objAnswer.front() == MAnswer::StatusHead
                                      ? static_cast<std::size_t>(MAnswer::StatusLength)
                                      : p_iSettingsLength);
}

void CAnswerAssembler::Clear() {
    m_objAnswer.clear();
    m_bComplete = false;
    m_bUnknown = false;
}
