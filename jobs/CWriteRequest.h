#pragma once

#include "model/CSnapshot.h"

#include <string>

/// What is asked for when settings are to be changed.
struct CWriteRequest {
    CSnapshot m_objWanted{};                             ///< what is known in it is wanted
    MSettings::Cuts m_iLink = MSettings::Cuts::Nothing;  ///< the link in use; Nothing is USB
    /// Of settings that no answer reports what somebody says they are, and what the link in use
    /// stands on.
    CSnapshot m_objVouched{};
    CSnapshot m_objLinkStands{};
    bool m_bAllowLinkChange = false;
    bool m_bCheckOnly = false;        ///< everything up to the plan
    CSnapshot m_objExpected{};        ///< what is known in it the printer has to hold before
    std::string m_strExpectedHost{};  ///< the host name it has to have; empty: any
    double m_dReach = 60;             ///< for how long a printer that does not answer is sought
};
