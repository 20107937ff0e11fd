#pragma once

#include "link/ISessionEvents.h"

/// Nobody hears of a session.
class CQuietEvents : public ISessionEvents {
public:
    void OnBusy(bool /*p_bBusy*/) override {}
    void OnLinkStatus(const CLinkStatus& /*p_objStatus*/) override {}
    void OnStep(std::int16_t /*p_iStep*/, std::int16_t /*p_iSteps*/) override {}
    void OnStatus(const std::string& /*p_strText*/) override {}
    void OnHeadCheck(const std::string& /*p_strText*/) override {}
    void OnFailure(const CFailure& /*p_objFailure*/) override {}
    void OnCommandFailed(const CFailure& /*p_objFailure*/) override {}
};
