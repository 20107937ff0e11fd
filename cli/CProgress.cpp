#include "cli/CProgress.h"

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

void CProgress::Show(std::string_view p_strWhat) {
    m_objOutput.ShowProgress(m_strTarget + ": " + std::string(p_strWhat) + " ...");
}
