#include "tests/cli/faults/MFaultRules.h"

#include "cli/CInterrupt.h"
#include "cli/MExitCode.h"
#include "model/MSettings.h"
#include "protocol/MCommand.h"
#include "protocol/MSettingRoute.h"
#include "tests/cli/CJsonSchema.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace {

using Json = nlohmann::ordered_json;
using MFaultCells::Cell;
using MFaultCells::Played;
using MFaultRows::Row;
using Changes = Row::Changes;

/// A cell that is judged.
class Judge {
public:
    Judge(const Cell& p_objCell, const Played& p_objPlayed)
        : m_objCell(p_objCell)
        , m_objPlayed(p_objPlayed)
        , m_objOutcome(p_objPlayed.m_objOutcome)
        , m_objJson(Json::parse(m_objOutcome.m_strOut, nullptr, false))
        , m_iCode(m_objOutcome.m_iCode) {}

    std::vector<std::string> Broken() {
        Must(CJsonSchema::OfOutputs().Complaint(m_objOutcome.m_strOut).empty(),
             "standard output is one object of the schema: " + m_objOutcome.m_strOut);
        if (!m_objJson.is_object()) {
            return m_strBroken;
        }
        JudgeEnd();
        JudgeCode();
        JudgeCtrlC();
        JudgeReading();
        JudgeStatus();
        if (m_objCell.m_objRow->m_iChanges == Changes::Settings) {
            JudgeChange();
        } else if (m_objCell.m_objRow->m_iChanges == Changes::Journal) {
            JudgeRecovery();
        } else {
            Must(m_objOutcome.m_strAfter == m_objOutcome.m_strBefore, "no setting is changed");
            Must(!m_objOutcome.m_bJournal, "no journal is left");
        }
        return m_strBroken;
    }

private:
    void Must(bool p_bTrue, const std::string& p_strWhat) {
        if (!p_bTrue) {
            m_strBroken.push_back(p_strWhat);
        }
    }
    [[nodiscard]] bool Is(std::initializer_list<int> p_iCodes) const {
        return std::ranges::find(p_iCodes, m_iCode) != p_iCodes.end();
    }
    [[nodiscard]] bool HasSet() const {
        return std::ranges::any_of(m_objOutcome.m_strCommands, &Judge::Sets);
    }
    static bool Sets(const std::string& p_strCommand) {
        return p_strCommand.starts_with("{Z2;") || p_strCommand.starts_with("{I");
    }
    [[nodiscard]] bool IsAsBefore() const {
        return m_objOutcome.m_strAfter == m_objOutcome.m_strBefore;
    }
    /// Whether the printer holds what is wanted, and besides what it held.
    [[nodiscard]] bool IsAsWanted() const {
        const auto strWanted = m_objCell.m_objRow->Wanted();
        return std::ranges::all_of(m_objOutcome.m_strAfter, [&](const auto& p_objHeld) {
            const auto objFound = strWanted.find(p_objHeld.first);
            return objFound == strWanted.end()
                       ? m_objOutcome.m_strBefore.at(p_objHeld.first) == p_objHeld.second
                       : p_objHeld.second.starts_with(objFound->second);
        });
    }

    void JudgeEnd() {
        Must(m_objOutcome.m_bClosed, "every link is closed");
        Must(m_objOutcome.m_iInside == 0, "no event loop runs");
        Must(m_objOutcome.m_iSendingsLater == 0, "nothing is sent when the command is over");
        Must(!m_objOutcome.m_bLocked, "the state is nobody's");
        Must(m_objOutcome.m_dSeconds <= m_objCell.m_objRow->m_dMost, "it ends in its time");
    }

    void JudgeCode() {
        Must(Is({MExitCode::Done, MExitCode::Failed, MExitCode::NotReachable, MExitCode::Different,
                 MExitCode::PersonNeeded, MExitCode::Interrupted}),
             "the exit code is one of those that are told");
        Must(m_objJson.contains("error") == !Is({MExitCode::Done, MExitCode::Different}),
             "an error stands there when it failed, and only then");
        Must(m_iCode != MExitCode::NotReachable || m_objOutcome.m_iSendings == 0,
             "not reachable is what nothing was sent to");
        if (m_objJson.contains("error") && m_iCode != MExitCode::Interrupted) {
            const Json& objError = m_objJson["error"];
            Must(objError["target"] == MFaultRows::Target(m_objCell.m_iLink),
                 "the failure names the printer");
            const bool bWayOut = !objError["cause"].is_null() || !objError["hint"].is_null();
            Must(bWayOut, "a failure has a cause or a way out");
            const std::string strWords = objError.dump();
            Must(strWords.find("has told the status") == std::string::npos ||
                     strWords.find("switched on and ready") == std::string::npos,
                 "what has told its status is switched on");
            Must(strWords.find("refused a command") == std::string::npos ||
                     strWords.find("status 06") != std::string::npos,
                 "a refusal is the status 06");
            const bool bNotReady = strWords.find("is not ready to be changed") != std::string::npos;
            Must(!bNotReady || strWords.find("it reports ") != std::string::npos,
                 "not ready is a printer that has told so");
            Must(strWords.find("have changed meanwhile") == std::string::npos,
                 "nobody else has changed anything");
            const bool bSaysOut = strWords.find("the command went out") != std::string::npos;
            Must(!bSaysOut || m_objOutcome.m_iSendings > 0, "what went out has gone out");
        }
        Must(m_objCell.m_objFault != nullptr || Is({MExitCode::Done, MExitCode::Different}),
             "nothing fails when nothing goes wrong");
    }

    void JudgeCtrlC() {
        constexpr double Thousand = 1000;
        const bool bCame = m_objOutcome.m_dSinceCtrlC >= 0;
        Must(bCame == (m_iCode == MExitCode::Interrupted), "Ctrl-C, and it alone, is 130");
        Must(!bCame || m_objOutcome.m_dSinceCtrlC <= CInterrupt::GraceMilliseconds / Thousand,
             "Ctrl-C has closed the link before the program is ended");
        Must(m_objOutcome.m_iSendingsSinceCtrlC == 0, "nothing is sent behind Ctrl-C");
        Must(m_objCell.m_objPlan.m_iKind != MFaults::Kind::InterruptedBetween ||
                 m_objOutcome.m_strCommands.size() == m_objCell.m_objPlan.m_iAt + 1,
             "the next command does not come");
        if (bCame && m_objOutcome.m_bJournal) {
            const std::string strCause = m_objJson["error"]["cause"].dump();
            Must(strCause.find("its journal is /state/") != std::string::npos,
                 "Ctrl-C names the journal");
        }
    }

    void JudgeReading() {
        if (m_objJson.contains("complete")) {
            const bool bComplete = m_objJson["complete"] == true;
            Must(bComplete == (m_iCode == MExitCode::Done), "0 is what is read completely");
            Must(m_objOutcome.m_strFiles.empty() == !bComplete, "it is saved when it is complete");
            Must(m_objJson["saved"].is_null() == !bComplete, "and it is told");
            JudgeValues();
        }
        if (m_objJson.contains("different")) {
            const bool bKnown = IsAllCompared();
            Must(bKnown == Is({MExitCode::Done, MExitCode::Different}),
                 "0 and 4 are what could be compared whole");
            Must(!bKnown || m_objJson["different"].empty() == (m_iCode == MExitCode::Done),
                 "0 is the same");
            Must(Asked() == std::set<std::string>{"0", "1", "2", "3", "4"}, "all was read for it");
        }
    }

    /// Of a comparison: nothing is unknown but what no answer reports.
    [[nodiscard]] bool IsAllCompared() const {
        const Json& objUnknown = m_objJson["unknown"];
        return std::ranges::all_of(objUnknown, [](const Json& p_objWhy) {
            return p_objWhy["a"] == "no answer reports it" && p_objWhy["b"].is_null();
        });
    }

    /// Whether what comes can be taken for settings that the printer does not hold: an answer has
    /// no sum by which it could be told from what only looks like it.
    [[nodiscard]] bool MayTellOther() const {
        using Kind = MFaults::Kind;
        constexpr std::array Kinds{Kind::OutOfRange, Kind::Junk100, Kind::JunkBefore100,
                                   Kind::Junk64K,    Kind::Junk1M,  Kind::Endless};
        return std::ranges::find(Kinds, m_objCell.m_objPlan.m_iKind) != Kinds.end();
    }

    /// What is no number is a text all the same.
    [[nodiscard]] bool MayTellOther(const std::string& p_strName) const {
        const bool bText = MSettings::Get(p_strName).m_iKind == MSettings::Kind::Text;
        return MayTellOther() || (bText && m_objCell.m_objPlan.m_iKind == MFaults::Kind::NoNumbers);
    }

    /// Its answer came without a number in it.
    [[nodiscard]] bool IsGarbled(const std::string& p_strName) const {
        const MSettings::Row& objRow = MSettings::Get(p_strName);
        const std::string strRequest = MCommand::ReadRequest(MSettingRoute::ReportedIn(objRow));
        const auto& strCommands = m_objOutcome.m_strCommands;
        const auto objFound = std::ranges::find(strCommands, strRequest);
        return m_objCell.m_objPlan.m_iKind == MFaults::Kind::NoNumbers &&
               objRow.m_iKind != MSettings::Kind::Text &&
               static_cast<std::size_t>(objFound - strCommands.begin()) >=
                   m_objCell.m_objPlan.m_iAt;
    }

    /// No value stands there that the printer does not hold, or has not told.
    void JudgeValues() {
        bool bAllKnown = true;
        for (const auto& objSetting : m_objJson["settings"].items()) {
            const Json& objValue = objSetting.value()["value"];
            const std::string strText =
                objValue.is_string() ? objValue.get<std::string>() : objValue.dump();
            const std::string& strHeld = m_objOutcome.m_strBefore.at(objSetting.key());
            Must(objValue.is_null() || strHeld == strText || strHeld + ".0" == strText ||
                     (MayTellOther(objSetting.key()) && m_objJson["complete"] == false),
                 objSetting.key() + " is " + strText + " and the printer holds " + strHeld);
            Must(objValue.is_null() || !IsGarbled(objSetting.key()),
                 objSetting.key() + " was no number");
            const Json& objWhy = objSetting.value()["why"];
            Must(objValue.is_null() != objWhy.is_null(),
                 objSetting.key() + " is known, or why not");
            bAllKnown = bAllKnown && (objWhy.is_null() || objWhy == "not-reported");
        }
        Must(bAllKnown == (m_objJson["complete"] == true), "complete is when all is known");
    }

    [[nodiscard]] std::set<std::string> Asked() const {
        constexpr std::size_t Position = 4;
        std::set<std::string> strGroups;
        for (const std::string& strCommand : m_objOutcome.m_strCommands) {
            if (strCommand.starts_with("{Z5;")) {
                strGroups.insert(strCommand.substr(Position, 1));
            }
        }
        return strGroups;
    }

    void JudgeStatus() {
        if (!m_objJson.contains("code")) {
            return;
        }
        const Json& objCode = m_objJson["code"];
        constexpr std::array Told{"00", "06", "11", "99"};
        Must(objCode.is_null() || MayTellOther() || std::ranges::find(Told, objCode) != Told.end(),
             "the code is one that the printer has told: " + objCode.dump());
        Must(m_iCode != MExitCode::Done || !objCode.is_null(), "0 is what has told its status");
        if (m_objJson.contains("seconds")) {
            Must((m_iCode == MExitCode::Done) == !objCode.is_null(),
                 "and everything else is not 0");
            const auto objFile = m_objOutcome.m_strFiles.find("/saved/printer.prom");
            Must(objFile != m_objOutcome.m_strFiles.end(), "the metrics are written");
            const char* const strReachable = objCode.is_null() ? "\"} 0" : "\"} 1";
            Must(objFile != m_objOutcome.m_strFiles.end() &&
                     objFile->second.find(strReachable) != std::string::npos,
                 "the metrics say whether it was reached");
        }
        if (m_objJson.contains("function")) {
            Must(m_iCode != MExitCode::Done || objCode == "00", "0 is no error");
            Must(m_objJson["sent"] == true || m_objOutcome.m_iSendings == 0 ||
                     m_iCode == MExitCode::Failed,
                 "what was sent is told, or that it failed");
            const std::size_t iAll = m_objJson["commands"].size();
            Must(m_iCode != MExitCode::Done || m_objOutcome.m_strCommands.size() >= iAll,
                 "0 is when all commands have come");
        }
    }

    void JudgeChange() {
        const bool bWanted = IsAsWanted();
        const bool bCheck = m_objCell.m_objRow->m_strName == "write-check";
        Must(!bCheck || !HasSet(), "a check sends nothing that sets");
        Must(m_iCode != MExitCode::Done || bWanted, "0 is what the printer holds");
        Must(m_iCode != MExitCode::Done || IsReadBehind(), "and has said so itself");
        Must(m_iCode != MExitCode::Failed || IsAsBefore(), "1 is as it was");
        Must(m_iCode != MExitCode::NotReachable || IsAsBefore(), "3 is as it was");
        Must(m_iCode != MExitCode::Different || (bCheck && IsAsBefore()), "4 is for a check");
        Must(!Is({0, 1, 3, 4}) || !m_objOutcome.m_bJournal, "the journal goes when all is well");
        Must(m_iCode != MExitCode::PersonNeeded || m_objOutcome.m_bJournal, "5 leaves the journal");
        Must(m_iCode != MExitCode::Interrupted || m_objOutcome.m_bJournal || IsAsBefore(),
             "behind Ctrl-C a journal tells of what was changed");
        if (m_iCode == MExitCode::PersonNeeded) {
            Must(m_objJson["error"]["hint"].dump().find("/state/") != std::string::npos,
                 "5 names the journal");
        }
        const bool bAnswers = m_objCell.m_objPlan.m_iKind == MFaults::Kind::ErrorStatus;
        Must(!bAnswers || m_iCode != MExitCode::PersonNeeded, "what can be read is not lost");
        if (m_objOutcome.m_bJournal) {
            JudgeWayOut();
        }
        JudgeUndoing();
        JudgeResults();
    }

    /// What cannot be understood is brought back once, not again and again.
    void JudgeUndoing() {
        constexpr std::size_t Most = 60;  // thirteen of a change, and of its undoing what is needed
        const auto iSets = std::ranges::count_if(m_objOutcome.m_strCommands, &Judge::Sets);
        const std::size_t iSteps = m_objJson.contains("plan") ? m_objJson["plan"].size() : 0;
        Must(m_objCell.m_objPlan.m_iKind != MFaults::Kind::NoNumbers ||
                 (static_cast<std::size_t>(iSets) <= 2 * iSteps &&
                  m_objOutcome.m_strCommands.size() <= Most),
             "what is not understood is undone once: " + std::to_string(iSets));
    }

    /// The printer was read behind the last command that set something.
    [[nodiscard]] bool IsReadBehind() const {
        const auto& strCommands = m_objOutcome.m_strCommands;
        const auto objLast = std::find_if(strCommands.rbegin(), strCommands.rend(), &Judge::Sets);
        return std::count_if(strCommands.rbegin(), objLast, [](const std::string& p_strCommand) {
                   return p_strCommand.starts_with("{Z5;");
               }) >= 4;
    }

    /// A command that carries the setting has come whole.
    [[nodiscard]] bool HasCome(const std::string& p_strName) const {
        const MSettings::Row& objRow = MSettings::Get(p_strName);
        const std::string strHead(MSettingRoute::Head(MSettingRoute::CarriedBy(objRow)));
        return std::ranges::any_of(
            m_objOutcome.m_strCommands,
            [&](const std::string& p_strCommand) { return p_strCommand.starts_with(strHead); });
    }

    /// A journal brings back what was, once the printer is well and where it was.
    void JudgeWayOut() {
        Must(m_objPlayed.m_iRecovered == MExitCode::Done && m_objPlayed.m_bRestored,
             "varden recover --restore brings back what was: " +
                 std::to_string(m_objPlayed.m_iRecovered));
    }

    void JudgeResults() {
        if (!m_objJson.contains("results")) {
            return;
        }
        for (const auto& objResult : m_objJson["results"].items()) {
            const std::string& strHeld = m_objOutcome.m_strAfter.at(objResult.key());
            const auto strWanted = m_objCell.m_objRow->Wanted();
            const auto objWanted = strWanted.find(objResult.key());
            const bool bWanted =
                objWanted != strWanted.end() && strHeld.starts_with(objWanted->second);
            const std::string strResult = objResult.value();
            const bool bBefore = strHeld == m_objOutcome.m_strBefore.at(objResult.key());
            Must(strResult != "changed" || bWanted, objResult.key() + " is not changed");
            Must((strResult != "restored" && strResult != "same" && strResult != "refused") ||
                     bBefore,
                 objResult.key() + " is not " + strResult);
            Must(strResult != "restored" || m_objOutcome.m_strMoved.contains(objResult.key()),
                 objResult.key() + " was never changed");
            Must(strResult != "mismatch" || HasCome(objResult.key()),
                 objResult.key() + " has never come to the printer");
            Must(strResult != "lost" || m_iCode == MExitCode::PersonNeeded,
                 objResult.key() + " is lost without a person");
        }
        Must((m_objJson["changed"] == true) == (m_iCode == MExitCode::Done), "changed is 0");
        Must(m_objJson["journal"].is_null() != m_objOutcome.m_bJournal, "the journal is told");
    }

    void JudgeRecovery() {
        const std::string& strName = m_objCell.m_objRow->m_strName;
        const bool bKeeps = strName == "recover-keep" || strName == "recover-unseen";
        Must(m_iCode != MExitCode::Done || !m_objOutcome.m_bJournal, "0 ends it");
        Must(m_iCode == MExitCode::Done || m_objOutcome.m_bJournal, "nothing else does");
        Must(strName != "recover" || m_iCode != MExitCode::Done, "a look ends nothing");
        Must(strName == "recover-restore" || !HasSet(), "nothing is set but by restoring");
        Must(bKeeps || m_iCode != MExitCode::Done || IsReadBehind(), "what is ended was seen");
        Must(strName != "recover-keep" || m_iCode != MExitCode::Done || Asked().size() >= 4,
             "what is kept was seen");
        if (m_objJson.contains("results")) {
            const bool bTold = m_iCode == MExitCode::Done || m_iCode == MExitCode::Different;
            for (const auto& objValue : m_objJson["after"].items()) {
                const std::string strResult = m_objJson["results"][objValue.key()];
                Must(strName == "recover-unseen" || !bTold || !objValue.value().is_null() ||
                         strResult == "unverifiable",
                     "how it stands is known: " + objValue.key());
                Must(strResult != "restored" || m_objOutcome.m_strMoved.contains(objValue.key()),
                     objValue.key() + " was never brought back");
            }
        }
        Must(m_iCode == MExitCode::Interrupted || m_objJson.contains("results"),
             "what became of each setting is told");
        Must(strName != "recover-restore" || m_objOutcome.m_bJournal || m_objPlayed.m_bRestored,
             "what was is brought back");
    }

    const Cell& m_objCell;
    const Played& m_objPlayed;
    const CFaultOutcome& m_objOutcome;
    Json m_objJson;
    int m_iCode;
    std::vector<std::string> m_strBroken;
};

}  // namespace

std::vector<std::string> MFaultRules::Broken(const Cell& p_objCell, const Played& p_objPlayed) {
    return Judge(p_objCell, p_objPlayed).Broken();
}
