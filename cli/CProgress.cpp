#include "cli/CProgress.h"

#include <array>

void CProgress::OnLinkStatus(const CLinkStatus& p_objStatus) {
    if (p_objStatus.m_iState == CLinkStatus::State::Opening) {
        Show("connecting");
    }
}

void CProgress::OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) {
    if (p_iSteps == 0) {
        return;  // the reading is over; what comes now takes the line's place
    }
    Show("reading " + std::to_string(p_iStep) + " of " + std::to_string(p_iSteps));
}

void CProgress::OnStatus(const std::string& p_strText) {
    if (p_strText.empty()) {
        Show("asking for the status");
    }
}

void CProgress::OnStage(Stage p_iStage, std::size_t p_iStep, std::size_t p_iSteps) {
    constexpr std::array<const char*, 4> Names{"before the change", "changing", "reading back",
                                               "restoring"};
    m_strStage = Names.at(static_cast<std::size_t>(p_iStage));
    if (p_iSteps > 0) {
        m_strStage += " " + std::to_string(p_iStep) + " of " + std::to_string(p_iSteps);
    }
    Show("");
}

void CProgress::Show(std::string_view p_strWhat) {
    const char* const strBetween = m_strStage.empty() || p_strWhat.empty() ? "" : ", ";
    m_objOutput.ShowProgress(m_strTarget + ": " + m_strStage + strBetween + std::string(p_strWhat) +
                             " ...");
}
