#pragma once

#include "cli/COutput.h"
#include "cli/CTarget.h"
#include "jobs/IWriteEvents.h"
#include "link/ISessionEvents.h"

#include <string>
#include <string_view>

/// Shows people on a terminal what is being done with a printer.
class CProgress : public ISessionEvents, public IWriteEvents {
public:
    /// p_objOutput is not owned and outlives this.
    CProgress(const CTarget& p_objTarget, COutput& p_objOutput)
        : m_strTarget(p_objTarget.m_strText)
        , m_objOutput(p_objOutput) {}

    void OnBusy(bool /*p_bBusy*/) override {}
    void OnLinkStatus(const CLinkStatus& p_objStatus) override;
    void OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) override;
    void OnWaiting(std::int16_t /*p_iSeconds*/) override {}
    void OnStatus(const std::string& p_strText) override;
    void OnHeadCheck(const std::string& /*p_strText*/) override {}
    // What a failure is called is told at the end, once.
    void OnFailure(const CFailure& /*p_objFailure*/) override {}
    void OnCommandFailed(const CFailure& /*p_objFailure*/) override {}
    void OnStage(Stage p_iStage, std::size_t p_iStep, std::size_t p_iSteps) override;

private:
    void Show(std::string_view p_strWhat);

    std::string m_strTarget;
    std::string m_strStage;  // of a change; what is shown begins with it
    COutput& m_objOutput;
};
