#pragma once

#include <cstdint>

/// How long things may take, in seconds.
struct CPrinterLimits {
    double m_dOpen = 10;        ///< opening the link, the looking up of a name included
    double m_dSend = 2;         ///< until a command has gone out
    std::int16_t m_iReply = 5;  ///< until its answer is there
    double m_dPause = 1;        ///< what is left between the reading of two groups
};
