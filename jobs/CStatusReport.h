#pragma once

#include "link/CFailure.h"

#include <string>

/// What a printer has said of itself.
struct CStatusReport {
    std::string m_strCode{};  ///< two characters, also of an unknown code; empty without an answer
    std::string m_strText{};  ///< its words; empty for an unknown code
    double m_dSeconds = 0;    ///< from the request to the answer, or to the failure
    CFailure m_objFailure{};
    bool m_bSent = false;  ///< the request has gone out
};
