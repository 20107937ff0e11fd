#include "tests/ui/recorder/MFlows.h"

namespace MFlows {

const std::vector<Flow>& Talking() {
    // clang-format off
    static const std::vector<Flow> objFlows{
        {"btnGetStatus", 1, 1, false},
        {"btnRead", 3, 3, true},
        {"btnSet", 2, 2, false},
        {"btnDiagPrint", 1, 1, false},
        {"btnTestPrint", 1, 1, false},
        {"btnReflect", 1, 1, false},
        {"btnTrans", 1, 1, false},
        {"btnPaperEnd", 2, 2, false},
        {"btnThresholdCalib", 1, 1, false},
        {"btnRamClear", 1, 1, false},
        {"btnHeadCheck", 1, 2, false},
        {"btnLanRead", 1, 1, true},
        {"btnLanSet", 5, 5, false},
    };
    // clang-format on
    return objFlows;
}

int CommandsOf(const Flow& p_objFlow, LinkKind p_iLink) {
    return p_iLink == LinkKind::Usb ? p_objFlow.m_iUsbCommands : p_objFlow.m_iCommands;
}

const char* NameOf(LinkKind p_iLink) {
    switch (p_iLink) {
    case LinkKind::Com:
        return "COM";
    case LinkKind::Lan:
        return "LAN";
    case LinkKind::Usb:
        break;
    }
    return "USB";
}

}  // namespace MFlows
