#pragma once

#include <cstdint>
#include <string>

/// What is being done with the printer.
struct CDoingState {
    std::string m_strName{};   ///< "READ", "head check"; empty for nothing
    std::int16_t m_iStep = 0;  ///< the command that it is at, of m_iSteps; 0 of 0: not counted
    std::int16_t m_iSteps = 0;
    std::int16_t m_iWaiting = 0;  ///< how many seconds it has waited for an answer
    bool m_bConnecting = false;   ///< a connection is being made
};
