#pragma once

#include "link/CFailure.h"
#include "link/CLinkStatus.h"

#include <cstdint>
#include <string>

/// What happens between the tool and the printer, told as it happens. A window makes boxes, labels
/// and buttons of it; another front takes what it needs.
///
/// Calls come from inside exchanges and from the links' events. Whoever is told may let events run
/// (a box does) before it returns, and may throw: that ends the exchange like any other failure of
/// its handler.
class ISessionEvents {
public:
    virtual ~ISessionEvents() = default;

    /// An exchange, or a flow of several, has begun or is over. Told again for each that ends.
    virtual void OnBusy(bool p_bBusy) = 0;

    /// A link has come into this state, perhaps once more.
    virtual void OnLinkStatus(const CLinkStatus& p_objStatus) = 0;

    /// A flow of several exchanges is at number p_iStep of p_iSteps, counted from 1; 0 of 0 when it
    /// is over.
    virtual void OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) = 0;

    /// An answer has been awaited for p_iSeconds by now: told again with each whole second, and
    /// with 0 when the wait begins anew or is over. A wait that ends within its first second is not
    /// told.
    virtual void OnWaiting(std::int16_t p_iSeconds) = 0;

    /// The printer's status is p_strText now; empty when it is being asked for.
    virtual void OnStatus(const std::string& p_strText) = 0;

    /// The same for the result of a head check.
    virtual void OnHeadCheck(const std::string& p_strText) = 0;

    /// Something has gone wrong, this very moment.
    virtual void OnFailure(const CFailure& p_objFailure) = 0;

    /// The handler that sent a command tells that it has failed; OnFailure may have told what
    /// happened before. Nothing to tell for a failure of kind None.
    virtual void OnCommandFailed(const CFailure& p_objFailure) = 0;
};
