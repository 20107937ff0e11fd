#pragma once

#include "link/CFailure.h"

#include <cstdint>
#include <string>

/// How it stands with the link of one interface.
struct CLinkStatus {
    enum class State : std::uint8_t {
        Closed,
        Opening,
        Open,
        ClosedByPrinter,
        Failed,  ///< m_objFailure tells why
    };

    std::int16_t m_iInterface = 0;  ///< CInterface's number
    State m_iState = State::Closed;
    std::string m_strWhere{};  ///< "192.168.10.20:8000", "COM1 9600,E,8,1"; empty for USB
    CFailure m_objFailure{};
};
