#include "tests/cli/faults/MFaultRows.h"

#include <algorithm>

namespace MFaultRows {

namespace {

using MFaults::Link;
using Changes = Row::Changes;
using Words = std::vector<std::string>;

const std::vector<Link> Every{Link::Lan, Link::Com, Link::Usb};

/// What one exchange takes at most: ten seconds to open, two to send, five until the answer, one
/// more until whatever hangs is ended.
constexpr double Exchange = 18;
/// Reading everything, when nothing goes wrong: five answers of up to five seconds, four pauses.
constexpr double Reading = 30;
/// A change with all its readings, and its undoing with the printer sought each time.
constexpr double Changing = 400;

const Moment First{"the first request", "{", 0};
const Moment Third{"the third request", "{Z5;", 2, {}, false};

/// The settings that are wanted; one command carries the first two, another the third.
const Words Wanted{"feed-adj=-1.5", "cut-adj=1", "font-code=PC-852", "--stop-bit-is", "1bit"};

Words With(Words p_strWords, const Words& p_strFurther) {
    p_strWords.insert(p_strWords.end(), p_strFurther.begin(), p_strFurther.end());
    return p_strWords;
}

std::vector<Row> ThatRead() {
    return {
        {"read",
         {"read", "TARGET", "--save", "/saved/shop.json"},
         {First, Third},
         Changes::Nothing,
         Every,
         Reading + Exchange,
         {},
         true},
        {"status",
         {"status", "TARGET", "--prometheus", "/saved/printer.prom"},
         {First},
         Changes::Nothing,
         Every,
         Exchange,
         {},
         true},
        {"diff",
         {"diff", "TARGET", "defaults"},
         {First},
         Changes::Nothing,
         Every,
         Reading + Exchange},
    };
}

std::vector<Row> ThatMaintain() {
    return {
        {"head-check",
         {"maintain", "TARGET", "head-check"},
         {First, {"the question behind it", "{WS", 0}},
         Changes::Function,
         Every,
         2 * Exchange + 5},
        {"sensor-adjust",
         {"maintain", "TARGET", "sensor-adjust", "step=paper-end", "--yes"},
         {{"the first pass", "{Z6", 0},
          {"the second pass", "{Z6", 1},
          {"the question behind them", "{WS", 0}},
         Changes::Function,
         Every,
         3 * Exchange + 1},
    };
}

std::vector<Row> ThatWrite() {
    const std::vector<Moment> Moments{
        First,
        {"the question whether it is ready", "{WS", 0},
        {"the first command that sets", "{Z2", 0, {}, true, true},
        {"the first request of reading back", "{Z5", 0, "{Z2", true, true},
    };
    const std::vector<Moment> Moving{
        {"the command that moves the printer", "{", 0, "{WS", true, true},
        {"the first request of reading back", "{Z5", 0, "{WS", true, true},
    };
    return {
        {"write-check",
         With({"write", "TARGET", "--check"}, Wanted),
         {First},
         Changes::Settings,
         Every,
         2 * Reading + Exchange},
        {"write", With({"write", "TARGET", "--reach", "5"}, Wanted), Moments, Changes::Settings,
         Every, Changing},
        {"write-address",
         {"write", "TARGET", "--reach", "5", "ip-address=192.168.0.99", "--allow-link-change"},
         Moving,
         Changes::Settings,
         {Link::Lan},
         Changing},
        {"write-line",
         {"write", "TARGET", "--reach", "5", "speed=19200bps", "--stop-bit-is", "1bit",
          "--allow-link-change"},
         Moving,
         Changes::Settings,
         {Link::Com},
         Changing},
    };
}

std::vector<Row> ThatRecover() {
    const Words Before = With({"write", "TARGET", "--reach", "0"}, Wanted);
    return {
        {"recover",
         {"recover", "TARGET", "--reach", "5"},
         {First},
         Changes::Journal,
         Every,
         Changing,
         Before},
        {"recover-restore",
         {"recover", "TARGET", "--restore", "--reach", "5"},
         {First,
          {"the first command that sets", "{Z2", 0},
          {"the first request of reading back", "{Z5", 0, "{Z2"}},
         Changes::Journal,
         Every,
         Changing,
         Before},
        {"recover-keep",
         {"recover", "TARGET", "--keep", "--reach", "0"},
         {First},
         Changes::Journal,
         Every,
         Changing,
         Before},
        {"recover-unseen",
         {"recover", "TARGET", "--keep", "--unseen", "--reach", "0"},
         {First},
         Changes::Journal,
         Every,
         Changing,
         Before},
    };
}

}  // namespace

std::size_t Moment::Place(const std::vector<std::string>& p_strCommands) const {
    std::size_t iFrom = 0;
    if (!m_strBehind.empty()) {
        for (std::size_t i = 0; i < p_strCommands.size(); ++i) {
            iFrom = p_strCommands[i].starts_with(m_strBehind) ? i + 1 : iFrom;
        }
    }
    std::size_t iLeft = m_iNumber;
    for (std::size_t i = iFrom; i < p_strCommands.size(); ++i) {
        if (p_strCommands[i].starts_with(m_strHead) && iLeft-- == 0) {
            return i;
        }
    }
    return p_strCommands.size();
}

std::map<std::string, std::string> Row::Wanted() const {
    std::map<std::string, std::string> strWanted;
    for (const std::string& strWord : m_strBefore.empty() ? m_strWords : m_strBefore) {
        const std::size_t iEqual = strWord.find('=');
        if (iEqual != std::string::npos && m_iChanges != Changes::Function) {
            strWanted[strWord.substr(0, iEqual)] = strWord.substr(iEqual + 1);
        }
    }
    return strWanted;
}

std::string Row::CommandLine() const {
    std::string strLine = "varden";
    for (const std::string& strWord : m_strWords) {
        strLine += " " + strWord;
    }
    return strLine;
}

std::span<const Row> All() {
    static const std::vector<Row> Rows = [] {
        std::vector<Row> objRows = ThatRead();
        for (const auto& fnFurther : {ThatMaintain, ThatWrite, ThatRecover}) {
            const std::vector<Row> objFurther = fnFurther();
            objRows.insert(objRows.end(), objFurther.begin(), objFurther.end());
        }
        return objRows;
    }();
    return Rows;
}

std::string Target(Link p_iLink) {
    switch (p_iLink) {
    case Link::Lan:
        return "lan:printer";
    case Link::Com:
        return "com:/dev/ttyUSB0";
    case Link::Usb:
        break;
    }
    return "usb:1-2";
}

}  // namespace MFaultRows
