#pragma once

#include "link/CFailure.h"
#include "link/CLinkStatus.h"
#include "link/COutcome.h"

#include <cstdint>
#include <string>

/// What happens between the tool and the printer, told as it happens. The window makes boxes,
/// labels and buttons of it; a front without a window takes what it needs.
///
/// Calls come from inside exchanges and from events. A receiver may let events run (a box does)
/// before it returns; the session goes on afterwards.
class ISessionEvents {
public:
    virtual ~ISessionEvents() = default;

    /// An exchange, or a flow of several, has begun or ended.
    virtual void OnBusy(bool p_bBusy) = 0;

    /// A link is in another state than it was.
    virtual void OnLinkStatus(const CLinkStatus& p_objStatus) = 0;

    /// A flow of several exchanges is at number p_iStep of p_iSteps, counted from 1.
    virtual void OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) = 0;

    /// The printer's status is p_strText now; empty when it is being asked for.
    virtual void OnStatus(const std::string& p_strText) = 0;

    /// The same for the result of a head check.
    virtual void OnHeadCheck(const std::string& p_strText) = 0;

    /// Something has gone wrong, this very moment.
    virtual void OnFailure(const CFailure& p_objFailure) = 0;

    /// The command that was sent, or was to be, has failed; OnFailure has told what happened.
    virtual void OnCommandFailed(const CFailure& p_objFailure) = 0;
};
