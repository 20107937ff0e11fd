#pragma once

#include "tests/simulator/CSimulatorProcess.h"
#include "tour/CTour.h"

#include <string>

/// What passes between the tool and the simulator, step by step.
class CWire {
public:
    /// Neither is owned; both outlive this.
    CWire(CTour& p_objTour, CSimulatorProcess& p_objSimulator);

    /// Prints what has passed since the last call and expects the commands among it to be exactly
    /// these, in this order, and every button to be enabled now.
    void Expect(const std::vector<std::string>& p_strCommands);

private:
    CTour& m_objTour;
    CSimulatorProcess& m_objSimulator;
    std::size_t m_iLine = 0;     // the first line not yet printed
    std::size_t m_iCommand = 0;  // the first command not yet expected
};
