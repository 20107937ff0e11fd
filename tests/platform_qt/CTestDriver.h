#pragma once

#include <linux/serial.h>
#include <optional>
#include <termios.h>
#include <vector>

/// Stands in front of the system's calls for serial lines and printer ports in this program: keeps
/// what they are asked for, and answers in the system's place where a test says what.
class CTestDriver {
public:
    /// The one of this program. A test that has used it calls Forget.
    static CTestDriver& Instance();

    std::vector<termios> m_objSettings;                 ///< what was asked for, one after the other
    std::optional<int> m_iLines;                        ///< the state of the modem lines
    std::optional<serial_icounter_struct> m_objCounts;  ///< the driver's counts

    int m_iRefusing = -1;     ///< a file that is said to have room, and takes nothing
    int m_iRefusals = 0;      ///< how often it has
    int m_iMostRefusals = 0;  ///< after so many it takes what it is given; 0: never

    void Forget() { *this = CTestDriver(); }

private:
    CTestDriver() = default;
};
