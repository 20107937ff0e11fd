#pragma once

#include "tests/ui/recorder/MAnswerChanges.h"
#include "tests/ui/recorder/MFlows.h"

#include <cstdint>
#include <string>
#include <vector>

/// What can go wrong with one command: with the answer that it gets, or on its way to the printer.
namespace MAnswerFaults {

/// To which commands something can happen.
enum class Asked : std::uint8_t { Anything, Settings, Status };

/// An answer that is not as it should be, or what happens beside it.
struct Answer {
    std::string m_strName;
    MFlows::Links m_iLinks;
    Asked m_iAsked;
    void (*m_fnRule)(const MAnswerChanges::Hand&);
    bool m_bLaterToo = false;  ///< strikes a later command, too, of a flow that does not read
};

const std::vector<Answer>& Answers();

/// A command that does not reach the printer as it should.
struct Way {
    std::string m_strName;
    MFlows::Links m_iLinks;
    void (*m_fnBefore)(CScene&);  ///< called when the command is about to be sent
};

const std::vector<Way>& Ways();

/// Lets it happen to command number p_iCommand, or CScriptedWire::EveryCommand.
void Apply(const Answer& p_objFault, CScene& p_objScene, int p_iCommand);
void Apply(const Way& p_objFault, CScene& p_objScene, int p_iCommand);

}  // namespace MAnswerFaults
