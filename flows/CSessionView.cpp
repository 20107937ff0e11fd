#include "flows/CSessionView.h"

#include "flows/MFailureBox.h"

CSessionView::CSessionView(IExchangeView& p_objView, IMessageBox& p_objMessageBox)
    : m_objView(p_objView)
    , m_objMessageBox(p_objMessageBox) {}

void CSessionView::OnBusy(bool p_bBusy) {
    m_objView.SetControlsEnabled(!p_bBusy);
    m_objView.HoldInterface(p_bBusy);
}

void CSessionView::OnLinkStatus(const CLinkStatus& /*p_objStatus*/) {
    // Stands in the line at the foot of the window, as the next two do (CLineTeller).
}

void CSessionView::OnStep(std::int16_t /*p_iStep*/, std::int16_t /*p_iSteps*/) {}

void CSessionView::OnWaiting(std::int16_t /*p_iSeconds*/) {}

void CSessionView::OnStatus(const std::string& p_strText) {
    m_objView.ShowStatus(p_strText);
}

void CSessionView::OnHeadCheck(const std::string& p_strText) {
    m_objView.ShowHeadCheck(p_strText);
}

void CSessionView::OnFailure(const CFailure& p_objFailure) {
    MFailureBox::ShowAtOnce(p_objFailure, m_objMessageBox);
}

void CSessionView::OnCommandFailed(const CFailure& p_objFailure) {
    MFailureBox::ShowByHandler(p_objFailure, m_objMessageBox);
}
