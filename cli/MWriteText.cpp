#include "cli/MWriteText.h"

#include "cli/MFailureText.h"
#include "cli/MSaving.h"
#include "cli/MSettingCell.h"
#include "cli/MUtf8.h"
#include "protocol/MStatus.h"

#include <array>
#include <vector>

namespace {

using End = CWriteReport::End;
using Texts = CCommandError::Texts;
using Refusal = std::optional<CCommandError>;
using Why = CWriteReport::Why;

std::string Names(const CWritePlan::Rows& p_objRows) {
    std::vector<std::string> strNames;
    for (const MSettings::Row* const objRow : p_objRows) {
        strNames.emplace_back(objRow->m_strName);
    }
    return MSaving::Joined(strNames);
}

/// "06 Command Error"
std::string Status(const CStatusReport& p_objReport) {
    std::string strText;
    bool bKnown = false;
    MStatus::StatusText(p_objReport.m_strCode, strText, bKnown);
    strText.erase(0, strText.find_first_not_of(' '));
    return MUtf8::FromLatin1(p_objReport.m_strCode) + (strText.empty() ? "" : " " + strText);
}

/// What a failure of the link says of itself, as the end of a sentence.
std::string Failure(const CCommandError& p_objError) {
    const Texts& objTexts = p_objError.Words();
    return objTexts.m_strWhat + (objTexts.m_strCause.empty() ? "" : ": " + objTexts.m_strCause);
}

std::string Cause(const CWriteReport& p_objReport, const CTarget& p_objTarget,
                  const IDeviceAccess& p_objAccess, const Refusal& p_objRefusal) {
    const std::string strNames = Names(p_objReport.m_objRows);
    switch (p_objReport.m_iWhy) {
    case Why::Refused:
        // Any other error may be one that it has got into behind the command.
        return (p_objReport.m_objStatus.m_strCode == MFailureText::CommandError
                    ? "the printer has refused a command with the status "
                    : "the printer has answered a command with the status ") +
               Status(p_objReport.m_objStatus);
    case Why::NotAnswered:
        return Failure(MFailureText::Of(p_objReport.m_objStatus.m_objFailure,
                                        p_objReport.m_objStatus.m_bSent, p_objTarget, p_objAccess));
    case Why::OtherThanWanted:
        return "the printer holds other values than it was sent: " + strNames;
    case Why::OthersChanged:
        return "settings that were not sent have changed meanwhile: " + strNames;
    case Why::NotReadBack:
        return "it could not be read back: " +
               Failure(p_objRefusal
                           ? *p_objRefusal
                           : MFailureText::OfRead(p_objReport.m_objRead, p_objTarget, p_objAccess));
    case Why::NotUnderstood:
        return "what it told when it was read back is none of the values of " + strNames;
    default:
        return {};
    }
}

/// Why it cannot be begun with this printer now.
Texts NotBegunNow(const CWriteReport& p_objReport, const CTarget& p_objTarget) {
    switch (p_objReport.m_iWhy) {
    case Why::OtherHost:
        return {"This is another printer",
                "its host name is \"" +
                    MSettingCell::Text(MSettings::Get("dhcp-host-name"),
                                       p_objReport.m_objBefore.Items()) +
                    "\"",
                {},
                {}};
    case Why::PlaceTaken:
        return {"Somebody is already where the printer would go",
                p_objTarget.At(p_objReport.m_objPlace).m_strText + " takes connections",
                {},
                "choose another address or port"};
    case Why::NotReady:
        return {"The printer is not ready to be changed",
                "it reports " + Status(p_objReport.m_objStatus),
                {},
                "clear that at the printer, and try again"};
    default:
        return {"The journal cannot be written",
                {},
                {},
                "see that there is room on the disk, or name another folder with --state"};
    }
}

/// Why a change was not begun, and the way out.
Texts NotBegun(const CWriteReport& p_objReport, const CTarget& p_objTarget) {
    const std::string strNames = Names(p_objReport.m_objRows);
    switch (p_objReport.m_iWhy) {
    case Why::Unsteady:
        return {"What is read differs from one reading to the next",
                strNames,
                {},
                "see whether somebody is changing the printer, and try again"};
    case Why::Unreadable:
        return {"What the printer holds could not be brought back",
                "it has no value of " + strNames + " that could be sent",
                {},
                "set these at the printer, or with the setting tool"};
    case Why::NotGiven:
        return {strNames + " has to be told, too",
                "it travels in the same command, and the printer does not report it",
                {},
                "name its value, as in " + std::string(p_objReport.m_objRows.front()->m_strName) +
                    "=1bit or --stop-bit-is 1bit"};
    case Why::LinkChange:
        return {"This would change what the link in use stands on",
                strNames,
                {},
                "--allow-link-change does it all the same"};
    case Why::NotAsExpected:
        return {"The printer is not as it has to be before",
                strNames + " differ",
                {},
                "varden diff tells what differs"};
    default:
        return NotBegunNow(p_objReport, p_objTarget);
    }
}

CCommandError Failed(const CWriteReport& p_objReport, const CTarget& p_objTarget,
                     const std::string& p_strJournal, const IDeviceAccess& p_objAccess,
                     const Refusal& p_objRefusal) {
    const std::string strCause = Cause(p_objReport, p_objTarget, p_objAccess, p_objRefusal);
    const std::string& strTarget = p_objTarget.m_strText;
    if (p_objReport.m_iEnd == End::Undone) {
        const bool bSent = p_objReport.m_objPlace == CPrinterPlace{} || p_objReport.m_bSent;
        return {MExitCode::Failed,
                {strTarget + " was not changed", strCause, strTarget,
                 bSent ? "the printer is as it was before" : ""}};
    }
    const std::string strDoubtful =
        p_objReport.m_objDoubtful.empty()
            ? ""
            : "nobody can tell what it holds of " + Names(p_objReport.m_objDoubtful);
    const std::string strBetween = strCause.empty() || strDoubtful.empty() ? "" : "; ";
    return {MExitCode::PersonNeeded,
            {strTarget + " needs a person: it may be neither as it was nor as wanted",
             strCause + strBetween + strDoubtful, strTarget,
             "the journal is " + p_strJournal + "; varden recover " + strTarget +
                 (p_objReport.m_iWhy == Why::OthersChanged
                      ? " --keep ends it when that is as it should be"
                      : " tells how the printer stands, and --restore or --keep ends it")}};
}

}  // namespace

namespace MWriteText {

const char* Word(End p_iEnd) {
    constexpr std::array<const char*, 6> Words{"unchanged", "changed", "would-change",
                                               "not-begun", "undone",  "person-needed"};
    return Words.at(static_cast<std::size_t>(p_iEnd));
}

const char* Word(CWriteReport::Result p_iResult) {
    constexpr std::array<const char*, 7> Words{"same",     "changed",  "unverifiable", "refused",
                                               "mismatch", "restored", "lost"};
    return Words.at(static_cast<std::size_t>(p_iResult));
}

std::optional<CCommandError> Error(const CWriteReport& p_objReport, const CTarget& p_objTarget,
                                   const std::string& p_strJournal,
                                   const IDeviceAccess& p_objAccess,
                                   const std::optional<CCommandError>& p_objRefusal) {
    if (p_objReport.m_bJournalStays) {
        return CCommandError(MExitCode::PersonNeeded,
                             {"The journal of " + p_objTarget.m_strText + " cannot be removed",
                              "the printer itself is " + std::string(Word(p_objReport.m_iEnd)),
                              p_objTarget.m_strText, "remove " + p_strJournal});
    }
    switch (p_objReport.m_iEnd) {
    case End::Unchanged:
    case End::Changed:
    case End::WouldChange:
        return std::nullopt;
    case End::NotBegun:
        break;
    case End::Undone:
    case End::PersonNeeded:
        return Failed(p_objReport, p_objTarget, p_strJournal, p_objAccess, p_objRefusal);
    }
    if (p_objReport.m_iWhy == Why::NotRead) {
        return MFailureText::OfRead(p_objReport.m_objRead, p_objTarget, p_objAccess);
    }
    const CStatusReport& objStatus = p_objReport.m_objStatus;
    if (p_objReport.m_iWhy == Why::NotReady && !objStatus.m_objFailure.IsNone()) {
        // Something went out to it before: the readings.
        return CCommandError(
            MExitCode::Failed,
            MFailureText::Of(objStatus.m_objFailure, objStatus.m_bSent, p_objTarget, p_objAccess)
                .Words());
    }
    Texts objTexts = NotBegun(p_objReport, p_objTarget);
    objTexts.m_strTarget = p_objTarget.m_strText;
    return CCommandError(MExitCode::Failed, objTexts);
}

}  // namespace MWriteText
