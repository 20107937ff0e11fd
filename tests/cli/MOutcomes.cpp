#include "tests/cli/MOutcomes.h"

#include "cli/MExitCode.h"

namespace MOutcomes {

namespace {

constexpr const char* NoAnswer = "No answer from TARGET";
constexpr const char* NoSettings = "No settings from TARGET";
constexpr const char* NotSent = "Sending to TARGET has failed";
constexpr const char* Closed = "TARGET has closed the connection";
constexpr const char* Gone = "TARGET is gone";
constexpr const char* Error = "TARGET reports an error";
constexpr const char* NotOpened = "Cannot open TARGET";
constexpr std::size_t All = 5;  // answers with settings

Outcome Failed(const std::string& p_strWhat, std::size_t p_iRequests) {
    return {MExitCode::Failed, p_strWhat, p_iRequests};
}

Outcome NotReachable(const std::string& p_strWhat) {
    return {MExitCode::NotReachable, p_strWhat};
}

Outcome Did() {
    return {MExitCode::Done, {}, All};
}

Outcome Told(const std::string& p_strStatus) {
    return {MExitCode::Done, {}, 1, p_strStatus};
}

/// The printer has answered with a status that is an error.
Outcome Bad(const std::string& p_strStatus) {
    return {MExitCode::Failed, Error, 1, p_strStatus};
}

/// As without a fault, but for the status.
Outcomes Fine(const std::string& p_strStatus = "00") {
    const Outcome objDone = p_strStatus == "00" ? Told(p_strStatus) : Bad(p_strStatus);
    return {Did(), Told(p_strStatus), Did(), objDone};
}

/// Every command fails so, with the first request.
Outcomes AllFailed(const std::string& p_strWhat, std::size_t p_iRequests = 1) {
    return {Failed(p_strWhat, p_iRequests), Failed(p_strWhat, p_iRequests),
            Failed(p_strWhat, p_iRequests), Failed(p_strWhat, p_iRequests)};
}

/// What takes one request is done; what takes several fails so, with number p_iRequests of them.
Outcomes ReadFailed(const std::string& p_strWhat, std::size_t p_iRequests) {
    return {Failed(p_strWhat, p_iRequests), Told("00"), Failed(p_strWhat, p_iRequests), Told("00")};
}

/// No command gets to the printer.
Outcomes NoneReach(const std::string& p_strWhat) {
    return {NotReachable(p_strWhat), NotReachable(p_strWhat), NotReachable(p_strWhat),
            NotReachable(p_strWhat)};
}

std::array<Outcomes, Links> OnAll(const Outcomes& p_objOutcomes) {
    return {p_objOutcomes, p_objOutcomes, p_objOutcomes};
}

std::vector<Fault> FaultsOfAnswers() {
    return {
        {"Sound", "none", {}, OnAll(Fine())},
        {"Troubled", "the printer reports a paper jam", {"--status", "11"}, OnAll(Fine("11"))},
        {"UnknownCode",
         "it reports a code that nobody knows",
         {"--status", "99"},
         OnAll(Fine("99"))},
        {"Slow", "answers come after 0.3 s", {"--delay", "300"}, OnAll(Fine())},
        {"TooSlow", "answers come after 6 s", {"--delay", "6000"}, OnAll(AllFailed(NoAnswer))},
        {"Silent", "no answers", {"--silent"}, OnAll(AllFailed(NoAnswer))},
        {"InPieces",
         "answers come in pieces of 5 bytes",
         {"--pieces", "5", "--gap", "1"},
         OnAll(Fine())},
        {"InSlowPieces",
         "answers come in pieces of 16 bytes, 60 ms apart",
         {"--pieces", "16", "--gap", "60"},
         OnAll(Fine())},
        {"Cut", "only 3 bytes of an answer come", {"--cut", "3"}, OnAll(AllFailed(NoAnswer))},
        {"Junk", "junk comes in place of answers", {"--junk"}, OnAll(AllFailed(NoAnswer))},
        {"JunkBefore",
         "junk comes in front of answers",
         {"--junk-before"},
         {Fine(), Fine(), AllFailed(NoAnswer)}},
        {"FilledWithFF",
         "texts are filled with the byte 0xFF, which a serial line drops",
         {"--fill", "ff"},
         {Fine(), ReadFailed(NoAnswer, 4), Fine()}},
    };
}

std::vector<Fault> FaultsOfTheWay() {
    return {
        {"Nobody",
         "nobody is there",
         {},
         {NoneReach("Cannot reach TARGET"), NoneReach("There is no /dev/there-is-none"),
          NoneReach("There is no printer TARGET")},
         true},
        {"HangsUpAtOnce",
         "it hangs up, or is unplugged, before the first answer",
         {"--close-after", "0"},
         {AllFailed(Closed, 0), AllFailed(Gone, 0), AllFailed(NotSent, 0)}},
        {"HangsUp",
         "it does so behind the first answer",
         {"--close-after", "1"},
         {ReadFailed(NotSent, 1), ReadFailed(Gone, 1), ReadFailed(NotOpened, 1)}},
        {"HangsUpInside",
         "it does so in the middle of the first answer",
         {"--close-after", "1", "--cut", "3"},
         {AllFailed(Closed), AllFailed(Gone), AllFailed(NotOpened)}},
        {"PowerCutInside",
         "the power goes within the first request",
         {"--power-cut", "3", "--power-back", "never"},
         {AllFailed(Closed, 0), AllFailed(NoAnswer, 0), AllFailed(NotSent, 0)}},
        {"PowerCut",
         "the power goes with the end of the first request for settings",
         {"--power-cut", "7", "--power-back", "never"},
         {ReadFailed(Closed, 1), ReadFailed(NoAnswer, 1), ReadFailed(NotOpened, 1)}},
        {"PowerCutLater",
         "the power goes within the second one, and comes back",
         {"--power-cut", "12", "--power-back", "300"},
         {ReadFailed(Closed, 1), ReadFailed(NoAnswer, 1), ReadFailed(NotSent, 1)}},
    };
}

std::vector<Fault> FaultsOfState() {
    const Outcomes objOthers{Did(), Told("00"), {MExitCode::Different, {}, All}, Told("00")};
    const Outcomes objStatusRefused{Did(), Told("06"), Did(), Told("00")};
    const Outcomes objFunctionRefused{Did(), Told("00"), Did(), Bad("06")};
    return {
        {"Refuses",
         "it refuses the second request for settings, with the status 06",
         {"--refuse", "Z5;1"},
         {ReadFailed(NoSettings, 2), ReadFailed(NoSettings, 2), ReadFailed(NoAnswer, 2)}},
        {"RefusesStatus",
         "it refuses to tell its status, with the status 06",
         {"--refuse", "WS"},
         OnAll(objStatusRefused)},
        {"RefusesFunction",
         "it refuses a maintenance function, with the status 06",
         {"--refuse", "Z1"},
         OnAll(objFunctionRefused)},
        {"OwnAddress",
         "it holds its own address, which is not the default one",
         {"--own-address"},
         {objOthers, Fine(), Fine()}},
        {"Stuck", "a setting keeps its value", {"--stuck", "FeedAdjustment"}, OnAll(Fine())},
        {"HalfFields",
         "only some fields of a command are stored",
         {"--half-fields", "1"},
         OnAll(Fine())},
        {"HalfBytes",
         "only some bytes of a command are stored",
         {"--half-bytes", "3"},
         OnAll(Fine())},
        {"Moves", "a new address takes effect at once", {"--moves", "at-once"}, OnAll(Fine())},
        {"Forgets", "without power the settings are lost", {"--forget"}, OnAll(Fine())},
    };
}

/// A cell of the page.
std::string Text(const Outcome& p_objOutcome) {
    std::string strText = "**" + std::to_string(p_objOutcome.m_iCode) + "**";
    strText += p_objOutcome.m_strStatus.empty() ? "" : " status " + p_objOutcome.m_strStatus;
    strText += p_objOutcome.m_strWhat.empty() ? "" : " " + p_objOutcome.m_strWhat;
    return strText + ", " + std::to_string(p_objOutcome.m_iRequests) + " sent";
}

constexpr const char* Beginning = R"(# What comes of a command

Every command of `varden` that asks a printer, with what the
[simulated printer](simulator.md) can do wrong, on every link. This page is made of the table in
`tests/cli/MOutcomes.cpp`, which is also that of the tests: each cell is tried with the program and the
simulated printer. `cmake --build build/dev --target write-outcomes` writes it anew.

A cell tells the exit code; what `error` says; and how many requests the printer
receives whole. `read` and `diff` send five, `status` and
`maintain`, here a diagnostic print, one. In each cell standard output is one
JSON object as [json.md](json.md) has it; what was read before a failure stands in it.

| The printer's fault | Command | LAN | Serial line | USB |
|---|---|---|---|---|
)";

}  // namespace

std::span<const Fault> Faults() {
    static const std::vector<Fault> Rows = [] {
        std::vector<Fault> objRows = FaultsOfAnswers();
        for (const auto& fnFurther : {FaultsOfTheWay, FaultsOfState}) {
            const std::vector<Fault> objFurther = fnFurther();
            objRows.insert(objRows.end(), objFurther.begin(), objFurther.end());
        }
        return objRows;
    }();
    return Rows;
}

const char* Name(Link p_iLink) {
    constexpr std::array<const char*, Links> strNames{"LAN", "COM", "USB"};
    return strNames.at(p_iLink);
}

const char* Name(Command p_iCommand) {
    constexpr std::array<const char*, Commands> strNames{"read", "status", "diff", "maintain"};
    return strNames.at(p_iCommand);
}

std::vector<std::string> Words(Command p_iCommand) {
    switch (p_iCommand) {
    case Read:
        // Long enough for a connection's end to be known before the next request.
        return {"read", "TARGET", "--pause", "0.5", "--json"};
    case Status:
        return {"status", "TARGET", "--json"};
    case Maintain:
        return {"maintain", "TARGET", "diag-print", "--yes", "--json"};
    default:
        return {"diff", "TARGET", "defaults", "--json"};
    }
}

std::vector<std::string> Requests(Command p_iCommand) {
    if (p_iCommand == Status) {
        return {"{WS|}"};
    }
    if (p_iCommand == Maintain) {
        return {"{Z10|}"};
    }
    return {"{Z5;0|}", "{Z5;1|}", "{Z5;4|}", "{Z5;3|}", "{Z5;2|}"};
}

std::string Page() {
    std::string strPage = Beginning;
    for (const Fault& objFault : Faults()) {
        for (std::size_t iCommand = 0; iCommand < Commands; ++iCommand) {
            strPage += "| " + (iCommand == 0 ? objFault.m_strMeaning : "");
            strPage += std::string(" | `") + Name(static_cast<Command>(iCommand)) + "` |";
            for (const Outcomes& objOutcomes : objFault.m_objOutcomes) {
                strPage += " " + Text(objOutcomes.at(iCommand)) + " |";
            }
            strPage += "\n";
        }
    }
    return strPage;
}

}  // namespace MOutcomes
