#pragma once

#include "link/CWaiter.h"

/// What every handler of the window has in common.
namespace MHandler {

/// Runs p_objSteps as one handler: in a turn of its own, with the handler's one error trap around
/// it. An exception ends the steps there; what they hold (the busy state) is released on the way.
/// p_iLater: what becomes of it when another handler is started inside of it.
template <typename Steps>
void Run(CWaiter& p_objWaiter, const Steps& p_objSteps,
         CWaiter::Turn::Later p_iLater = CWaiter::Turn::Later::EndsIt) noexcept {
    try {
        const CWaiter::Turn objTurn(p_objWaiter, p_iLater);
        p_objSteps();
    } catch (...) {
        // A handler reports what it can put into words; for the rest the window stays as it is.
    }
}

}  // namespace MHandler
