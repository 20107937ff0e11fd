#pragma once

#include "tests/ui/faults/MFaults.h"
#include "tests/ui/recorder/MFlows.h"

#include <string>
#include <vector>

/// One cell of the fault table: a fault meets a flow on a link, at one of its commands.
struct CFaultCell {
    const MFaults::Fault* m_objFault = nullptr;
    const MFlows::Flow* m_objFlow = nullptr;
    LinkKind m_iLink = LinkKind::Com;
    int m_iCommand = 1;  ///< which command it strikes, counted from 1; 0: the opening of the link

    [[nodiscard]] int Commands() const { return MFlows::CommandsOf(*m_objFlow, m_iLink); }
    [[nodiscard]] bool IsLater() const { return m_iCommand > 1; }
    [[nodiscard]] bool IsLast() const { return IsLater() && m_iCommand == Commands(); }

    /// "LAN: silent", and which command it is where that is not the first one.
    [[nodiscard]] std::string Heading() const;
};

namespace MFaultCells {

/// The cells of one flow on one link, those without a fault first.
std::vector<CFaultCell> Of(const MFlows::Flow& p_objFlow, LinkKind p_iLink);

/// All of them, link by link and flow by flow.
std::vector<CFaultCell> All();

/// "READ": what people call the flow.
std::string NameOf(const MFlows::Flow& p_objFlow);

}  // namespace MFaultCells
