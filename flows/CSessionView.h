#pragma once

#include "flows/IExchangeView.h"
#include "link/ISessionEvents.h"
#include "platform/IMessageBox.h"

/// Shows a person what happens in a session: its busy state by the buttons, what the printer says
/// by the view's labels, a failure by the beep and the box of its row in MFailureBox.
class CSessionView : public ISessionEvents {
public:
    /// Neither is owned; both outlive this.
    CSessionView(IExchangeView& p_objView, IMessageBox& p_objMessageBox);

    void OnBusy(bool p_bBusy) override;
    void OnLinkStatus(const CLinkStatus& p_objStatus) override;
    void OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) override;
    void OnWaiting(std::int16_t p_iSeconds) override;
    void OnStatus(const std::string& p_strText) override;
    void OnHeadCheck(const std::string& p_strText) override;
    void OnFailure(const CFailure& p_objFailure) override;
    void OnCommandFailed(const CFailure& p_objFailure) override;

private:
    IExchangeView& m_objView;
    IMessageBox& m_objMessageBox;
};
