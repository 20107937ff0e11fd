#include "simulator/program/MFaultOptions.h"

#include "simulator/MCommandKind.h"
#include "simulator/MItemNames.h"

namespace {

constexpr unsigned LongestWait = 3'600'000;  // milliseconds: an hour
constexpr unsigned MostBytes = 65'535;
constexpr unsigned MostCommands = 1'000'000;
constexpr unsigned MostPowerBytes = 1'000'000'000;

using Moves = CStateFaults::Moves;

/// How a command begins, its "{" added when it was left out; empty when none begins so.
std::string Head(const QString& p_strValue) {
    const std::string strGiven = p_strValue.toStdString();
    std::string strHead = strGiven.starts_with('{') ? strGiven : '{' + strGiven;
    for (std::size_t i = 0; i < MCommandKind::KindCount; ++i) {
        const auto iKind = static_cast<MCommandKind::Kind>(i);
        const std::string_view strKnown = MCommandKind::Head(iKind);
        if (iKind != MCommandKind::Kind::Unknown &&
            (strHead.starts_with(strKnown) || strKnown.starts_with(strHead))) {
            return strHead;
        }
    }
    return {};
}

void ReadHead(COptionReader& p_objReader, const QString& p_strOption, const QString& p_strValue,
              std::string& p_strHead) {
    p_strHead = p_strValue.isEmpty() ? std::string() : Head(p_strValue);
    if (p_strHead.empty()) {
        p_objReader.Wrong(p_strOption, "how a command begins, such as {Z2;", p_strValue);
    }
}

void ReadRefused(COptionReader& p_objReader, CStateFaults& p_objFaults) {
    for (const QString& strValue : p_objReader.Values("refuse")) {
        ReadHead(p_objReader, "refuse", strValue, p_objFaults.m_strRefused.emplace_back());
    }
    p_objFaults.m_iRefusedOnly = p_objReader.Number("refuse-only", 1, MostCommands).value_or(0);
    if (p_objReader.IsSet("refuse-only") && !p_objReader.IsSet("refuse")) {
        p_objReader.Misplaced("--refuse-only goes with --refuse only.");
    }
}

void ReadStuck(COptionReader& p_objReader, CStateFaults& p_objFaults) {
    for (const QString& strValue : p_objReader.Values("stuck")) {
        if (!MItemNames::IsName(strValue.toStdString())) {
            p_objReader.Wrong("stuck", "the name of a setting, such as FeedAdjustment", strValue);
        }
        p_objFaults.m_strStuck.push_back(strValue.toStdString());
    }
}

void ReadHalf(COptionReader& p_objReader, CStateFaults& p_objFaults) {
    p_objFaults.m_iFieldsKept = p_objReader.Number("half-fields", 0, MostBytes);
    p_objFaults.m_iBytesKept = p_objReader.Number("half-bytes", 0, MostBytes);
    if (!p_objReader.IsSet("half-of")) {
        return;
    }
    ReadHead(p_objReader, "half-of", p_objReader.Value("half-of"), p_objFaults.m_strHalved);
    if (!p_objReader.IsSet("half-fields") && !p_objReader.IsSet("half-bytes")) {
        p_objReader.Misplaced("--half-of goes with --half-fields or --half-bytes only.");
    }
}

void ReadPower(COptionReader& p_objReader, CStateFaults& p_objFaults) {
    p_objFaults.m_bForgets = p_objReader.IsSet("forget");
    p_objFaults.m_iPowerCut = p_objReader.Number("power-cut", 1, MostPowerBytes);
    if (p_objReader.Value("power-back") == "never") {
        p_objFaults.m_iPowerBack.reset();
    } else if (const auto iBack = p_objReader.Number("power-back", 0, LongestWait)) {
        p_objFaults.m_iPowerBack = std::chrono::milliseconds(*iBack);
    }
}

void ReadMoves(COptionReader& p_objReader, CStateFaults& p_objFaults) {
    const QString strMoves = p_objReader.Value("moves");
    if (strMoves == "at-once") {
        p_objFaults.m_iMoves = Moves::AtOnce;
    } else if (strMoves == "after-restart") {
        p_objFaults.m_iMoves = Moves::AfterRestart;
    } else if (p_objReader.IsSet("moves") && strMoves != "never") {
        p_objReader.Wrong("moves", "at-once, after-restart or never");
    }
}

}  // namespace

namespace MFaultOptions {

QList<QCommandLineOption> All() {
    // clang-format off
    return {
        {"silent", "Carries commands out, but never answers."},
        {"delay", "Waits so many milliseconds before each answer.", "MS"},
        {"pieces", "Sends each answer in pieces of so many bytes.", "N"},
        {"gap", "The milliseconds between two pieces, 10 unless given.", "MS"},
        {"cut", "Sends only the first so many bytes of each answer, never the rest.", "N"},
        {"junk", "Sends junk in place of each answer."},
        {"junk-before", "Sends junk right in front of each answer."},
        {"close-after", "Closes a connection once so many of its commands are answered; 0 closes it at once. A serial line is pulled out a moment later, and a new one takes its place, also under the alias.", "N"},
        {"refuse", "Refuses commands that begin so with the status 06, such as \"{Z2;1,\" (the { may be left out). Can be given several times.", "HEAD"},
        {"refuse-only", "With --refuse: only number N of these commands, the others are carried out.", "N"},
        {"stuck", "A setting that does not change, whatever it is sent; its name is that in the lines printed, such as FeedAdjustment. Can be given several times.", "SETTING"},
        {"half-fields", "Stores only the first so many fields of a command that sets, yet answers as if it were all.", "N"},
        {"half-bytes", "Stores only the first so many bytes of its fields.", "N"},
        {"half-of", "With these two: only of commands that begin so.", "HEAD"},
        {"forget", "Without power the settings are lost: the printer comes back with those of its start."},
        {"power-cut", "The power goes when so many bytes have been received: connections are dropped, what was not answered never is, and new connections are refused. Once.", "N"},
        {"power-back", "The milliseconds until the power is back, 1000 unless given, or never.", "MS"},
        {"moves", "When a printer goes to the address and port that it is sent: at-once, after-restart (when its power comes back), or never, as it is unless given. Only addresses that begin with 127 can be reached.", "WHEN"},
    };
    // clang-format on
}

CFaultSettings ReadAnswers(COptionReader& p_objReader) {
    CFaultSettings objFaults;
    objFaults.m_bSilent = p_objReader.IsSet("silent");
    objFaults.m_bJunk = p_objReader.IsSet("junk");
    objFaults.m_bJunkBefore = p_objReader.IsSet("junk-before");
    objFaults.m_iDelay =
        std::chrono::milliseconds(p_objReader.Number("delay", 0, LongestWait).value_or(0));
    objFaults.m_iPieces = p_objReader.Number("pieces", 1, MostBytes).value_or(0);
    if (const auto iGap = p_objReader.Number("gap", 0, LongestWait)) {
        objFaults.m_iGap = std::chrono::milliseconds(*iGap);
    }
    objFaults.m_iCut = p_objReader.Number("cut", 0, MostBytes);
    objFaults.m_iCloseAfter = p_objReader.Number("close-after", 0, MostCommands);
    return objFaults;
}

CStateFaults ReadState(COptionReader& p_objReader) {
    CStateFaults objFaults;
    ReadRefused(p_objReader, objFaults);
    ReadStuck(p_objReader, objFaults);
    ReadHalf(p_objReader, objFaults);
    ReadPower(p_objReader, objFaults);
    ReadMoves(p_objReader, objFaults);
    return objFaults;
}

}  // namespace MFaultOptions
