#include "tests/ui/faults/CFaultCell.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

namespace {

/// Flows that differ from another one in the text of their one command alone. They meet one fault
/// of each kind, the other one all.
constexpr std::array<std::string_view, 5> Alike{"btnTestPrint", "btnDiagPrint", "btnThresholdCalib",
                                                "btnRamClear", "btnTrans"};

/// Those that wait for no answer.
constexpr std::array<std::string_view, 3> Unawaited{"btnReflect", "btnTrans", "btnPaperEnd"};

/// Those that meet what takes long to play: one of each kind.
constexpr std::array<std::string_view, 7> OfEachKind{
    "btnGetStatus", "btnRead", "btnSet", "btnReflect", "btnHeadCheck", "btnLanRead", "btnLanSet"};

/// Those that pause behind an answer.
constexpr std::array<std::string_view, 5> Pausing{"btnRead", "btnLanRead", "btnReflect",
                                                  "btnPaperEnd", "btnHeadCheck"};

/// Those that are over on a serial line before their answer comes.
constexpr std::array<std::string_view, 5> OverAtOnce{"btnGetStatus", "btnDiagPrint", "btnTestPrint",
                                                     "btnThresholdCalib", "btnRamClear"};

template <typename Names>
bool IsOf(const Names& p_strNames, const MFlows::Flow& p_objFlow) {
    return std::ranges::find(p_strNames, p_objFlow.m_strButton) != p_strNames.end();
}

bool Meets(const MFaults::Fault& p_objFault, const MFlows::Flow& p_objFlow, LinkKind p_iLink) {
    using MAnswerFaults::Asked;
    return MFlows::Has(p_objFault.m_iLinks, p_iLink) &&
           (p_objFault.m_iAsked == Asked::Anything ||
            (p_objFault.m_iAsked == Asked::Settings) == p_objFlow.m_bReads) &&
           (!p_objFault.Has(MFaults::Many) || IsOf(OfEachKind, p_objFlow)) &&
           (!p_objFault.Has(MFaults::InPause) || IsOf(Pausing, p_objFlow)) &&
           (!p_objFault.Has(MFaults::Presses) || !p_objFault.Has(MFaults::Behind) ||
            p_iLink != LinkKind::Com || !IsOf(OverAtOnce, p_objFlow)) &&
           (!p_objFault.Has(MFaults::Awaited) || !IsOf(Unawaited, p_objFlow)) &&
           (p_objFault.Has(MFaults::Core) || !IsOf(Alike, p_objFlow));
}

}  // namespace

std::string CFaultCell::Heading() const {
    return std::string(MFlows::NameOf(m_iLink)) + ": " + m_objFault->m_strName +
           (IsLast()    ? " (last command)"
            : IsLater() ? " (command " + std::to_string(m_iCommand) + ")"
                        : "");
}

namespace MFaultCells {

std::vector<CFaultCell> Of(const MFlows::Flow& p_objFlow, LinkKind p_iLink) {
    std::vector<CFaultCell> objCells;
    for (const MFaults::Fault& objFault : MFaults::All()) {
        if (!Meets(objFault, p_objFlow, p_iLink)) {
            continue;
        }
        if (objFault.m_iStrikes == MFaults::Strikes::Opening) {
            objCells.push_back({&objFault, &p_objFlow, p_iLink, 0});
            continue;
        }
        objCells.push_back({&objFault, &p_objFlow, p_iLink, 1});
        const int iLast = objCells.back().Commands();
        const bool bCore = objFault.Has(MFaults::Core) && &objFault != &MFaults::All().front();
        for (int iCommand = 2; iCommand <= iLast; ++iCommand) {
            if (objFault.Has(MFaults::Each) || (bCore && iCommand == iLast)) {
                objCells.push_back({&objFault, &p_objFlow, p_iLink, iCommand});
            }
        }
    }
    return objCells;
}

std::vector<CFaultCell> All() {
    std::vector<CFaultCell> objCells;
    for (const LinkKind iLink : MFlows::AllLinks) {
        for (const MFlows::Flow& objFlow : MFlows::Talking()) {
            const std::vector<CFaultCell> objOf = Of(objFlow, iLink);
            objCells.insert(objCells.end(), objOf.begin(), objOf.end());
        }
    }
    return objCells;
}

std::string NameOf(const MFlows::Flow& p_objFlow) {
    static const std::map<std::string, std::string> strNames{
        {"btnGetStatus", "GET STATUS"},
        {"btnRead", "READ"},
        {"btnSet", "SET"},
        {"btnDiagPrint", "DIAG PRINT"},
        {"btnTestPrint", "TEST PRINT"},
        {"btnReflect", "REFLECT"},
        {"btnTrans", "TRANS"},
        {"btnPaperEnd", "PAPER END"},
        {"btnThresholdCalib", "THRESHOLD"},
        {"btnRamClear", "RAM CLEAR"},
        {"btnHeadCheck", "HEAD CHECK"},
        {"btnLanRead", "LAN READ"},
        {"btnLanSet", "LAN SET"},
    };
    return strNames.at(p_objFlow.m_strButton);
}

}  // namespace MFaultCells
