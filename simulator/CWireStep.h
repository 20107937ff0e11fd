#pragma once

#include <chrono>
#include <string>

/// One step of an answer: wait, then send the bytes, then close the connection if told to.
///
/// Steps are carried out one after the other; a step's delay begins when the step before it is
/// done.
struct CWireStep {
    std::chrono::milliseconds m_iDelay{0};
    std::string m_strBytes;  ///< may be empty
    bool m_bClose = false;   ///< nothing follows a step that closes
    std::string m_strNote;   ///< what the bytes are, for people

    bool operator==(const CWireStep&) const = default;
};
