#include "flows/MDoingText.h"

std::string MDoingText::Of(const CDoingState& p_objState) {
    if (p_objState.m_bConnecting) {
        return "connecting";
    }
    std::string strText = p_objState.m_strName;
    if (!strText.empty() && p_objState.m_iSteps > 1) {
        strText +=
            " " + std::to_string(p_objState.m_iStep) + " of " + std::to_string(p_objState.m_iSteps);
    }
    if (p_objState.m_iWaiting > 0) {
        strText += strText.empty() ? "" : ": ";
        strText += "waiting for the answer (" + std::to_string(p_objState.m_iWaiting) + " s)";
    }
    return strText;
}
