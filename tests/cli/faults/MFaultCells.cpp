#include "tests/cli/faults/MFaultCells.h"

#include <algorithm>

namespace MFaultCells {

namespace {

using MFaultRows::Moment;
using MFaultRows::Row;
using MFaults::Fault;
using MFaults::Kind;
using MFaults::Link;
using MFaults::Where;

/// Whether a fault is tried at a moment. What is met in the middle of a change stands for its like,
/// and of that once what passes by itself.
bool IsTried(const Row& p_objRow, const Fault& p_objFault, std::size_t p_iPlace, bool p_bOnce) {
    const bool bChange = p_objRow.m_iChanges == Row::Changes::Settings ||
                         p_objRow.m_iChanges == Row::Changes::Journal;
    const bool bInterruption = MFaults::IsInterruption(p_objFault.m_iKind);
    if (p_bOnce) {
        return p_objFault.m_bStands && !bInterruption;
    }
    const bool bAll = !bChange || (p_iPlace == 0 && p_objRow.m_strBefore.empty());
    return bAll || p_objFault.m_bStands || bInterruption;
}

/// What a change leaves behind whose first command went out and was never answered.
struct Left {
    std::map<std::string, std::string> m_strState;
    CItemManager m_objHeld;
};

const Left& LeftOf(const Row& p_objRow, Link p_iLink) {
    constexpr std::size_t FirstThatSets = 8;  // behind two readings and the question
    static std::map<Link, Left> Known;        // of all rows the same
    const auto [objFound, bNew] = Known.try_emplace(p_iLink);
    if (bNew) {
        CFaultScene objScene(p_iLink);
        objScene.Run(p_objRow.m_strBefore, {Kind::Silent, FirstThatSets, false});
        objFound->second = {objScene.State(), objScene.Items()};
    }
    return objFound->second;
}

bool CanMeet(const Fault& p_objFault, const Moment& p_objMoment, Link p_iLink,
             const std::vector<std::string>& p_strCommands, bool p_bFloods) {
    const std::size_t iPlace = p_objMoment.Place(p_strCommands);
    const bool bSettings = p_strCommands[iPlace].starts_with("{Z5;");
    switch (p_objFault.m_iWhere) {
    case Where::Begin:
        return iPlace == 0 && p_bFloods;
    case Where::Opening:
        return p_objMoment.m_bOpens || p_iLink == Link::Usb;
    case Where::Any:
        return true;
    case Where::Settings:
        return bSettings;
    case Where::Status:
        return !bSettings;
    case Where::Followed:
        break;
    }
    return iPlace + 1 < p_strCommands.size();
}

}  // namespace

std::string Cell::Heading() const {
    return std::string(MFaults::Name(m_iLink)) + (m_objFault == nullptr ? ": " : ", ") + Fault();
}

std::string Cell::Fault() const {
    if (m_objFault == nullptr) {
        return "nothing goes wrong";
    }
    return m_objMoment->m_strMeaning + ": " + std::string(m_objFault->m_strMeaning) +
           (m_objPlan.m_bOnce ? ", once" : "");
}

std::vector<std::string> Commands(const Row& p_objRow, Link p_iLink) {
    return Play({&p_objRow, p_iLink}).m_objOutcome.m_strCommands;
}

std::vector<Cell> Of(const Row& p_objRow, Link p_iLink) {
    const std::vector<std::string> strCommands = Commands(p_objRow, p_iLink);
    std::vector<Cell> objCells{{&p_objRow, p_iLink}};
    for (const Moment& objMoment : p_objRow.m_objMoments) {
        const std::size_t iPlace = objMoment.Place(strCommands);
        if (iPlace == strCommands.size()) {
            continue;
        }
        for (const bool bOnce : {false, true}) {
            for (const Fault& objFault : MFaults::All()) {
                const bool bHas =
                    std::ranges::find(objFault.m_iLinks, p_iLink) != objFault.m_iLinks.end() &&
                    CanMeet(objFault, objMoment, p_iLink, strCommands, p_objRow.m_bFloods);
                const bool bWanted =
                    (!bOnce || objMoment.m_bOnce) && IsTried(p_objRow, objFault, iPlace, bOnce);
                if (bHas && bWanted) {
                    objCells.push_back({&p_objRow,
                                        p_iLink,
                                        &objMoment,
                                        &objFault,
                                        {objFault.m_iKind, iPlace, bOnce}});
                }
            }
        }
    }
    return objCells;
}

Played Play(const Cell& p_objCell) {
    CFaultScene objScene(p_objCell.m_iLink);
    const auto strFirst = objScene.Held();
    if (!p_objCell.m_objRow->m_strBefore.empty()) {
        const Left& objLeft = LeftOf(*p_objCell.m_objRow, p_objCell.m_iLink);
        objScene.State() = objLeft.m_strState;
        objScene.Hold(objLeft.m_objHeld);
    }
    Played objPlayed;
    objPlayed.m_objOutcome = objScene.Run(p_objCell.m_objRow->m_strWords, p_objCell.m_objPlan);
    if (objPlayed.m_objOutcome.m_bJournal && p_objCell.m_objRow->m_strBefore.empty()) {
        objScene.Mend();
        const CFaultOutcome objRestored =
            objScene.Run({"recover", "TARGET", "--restore", "--reach", "5"}, {});
        objPlayed.m_iRecovered = objRestored.m_iCode;
    }
    objPlayed.m_bRestored = objScene.Held() == strFirst && objScene.State().empty();
    return objPlayed;
}

}  // namespace MFaultCells
