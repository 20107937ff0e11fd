#pragma once

#include "link/ISessionEvents.h"

/// Hears of a session for somebody else, and keeps the failure that was told last.
class CFailureTap : public ISessionEvents {
public:
    /// p_objEvents is told everything. Not owned, outlives this.
    explicit CFailureTap(ISessionEvents& p_objEvents)
        : m_objEvents(p_objEvents) {}

    /// None while nothing has gone wrong.
    [[nodiscard]] const CFailure& Last() const { return m_objLast; }

    void OnBusy(bool p_bBusy) override { m_objEvents.OnBusy(p_bBusy); }
    void OnLinkStatus(const CLinkStatus& p_objStatus) override {
        m_objEvents.OnLinkStatus(p_objStatus);
    }
    void OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) override {
        m_objEvents.OnStep(p_iStep, p_iSteps);
    }
    void OnWaiting(std::int16_t p_iSeconds) override { m_objEvents.OnWaiting(p_iSeconds); }
    void OnStatus(const std::string& p_strText) override { m_objEvents.OnStatus(p_strText); }
    void OnHeadCheck(const std::string& p_strText) override { m_objEvents.OnHeadCheck(p_strText); }
    void OnFailure(const CFailure& p_objFailure) override {
        m_objLast = p_objFailure;
        m_objEvents.OnFailure(p_objFailure);
    }
    void OnCommandFailed(const CFailure& p_objFailure) override {
        m_objEvents.OnCommandFailed(p_objFailure);
    }

private:
    ISessionEvents& m_objEvents;
    CFailure m_objLast;
};
