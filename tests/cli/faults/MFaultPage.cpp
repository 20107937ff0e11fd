#include "tests/cli/faults/MFaultPage.h"

#include "tests/cli/faults/MFaultCells.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

using MFaultRows::Moment;
using MFaultRows::Row;
using MFaults::Fault;
using MFaults::Link;

constexpr const char* Begin = "<!-- command line: begin -->";
constexpr const char* End = "<!-- command line: end -->";

constexpr std::array Links{Link::Lan, Link::Com, Link::Usb};
using Line = std::array<std::string, Links.size()>;

constexpr const char* Beginning = R"(## The command line

Every command of `varden` that asks a printer, with every fault that can meet it, on each link:
)";

constexpr const char* Explanation =
    R"( cells, each a test. The commands run in one process, with everything
of the program that is not the network, the port or the bus itself, and with a clock that is moved.
`tests/cli/faults/` holds the table; its `expected/` has all that comes of each cell: the whole `error`,
what was asked, what became of each setting, what the printer holds then, the seconds. Besides, each cell
is held against the rules that [json.md](json.md) and [write.md](write.md) give (`MFaultRules.cpp`): 3 is
what nothing was sent to, 0 what was read or verified whole, 5 leaves a journal that brings back what was,
behind a command nothing is sent any more. [outcomes.md](outcomes.md) and the table in write.md hold the
cells that are tried on real bytes, with the program, the simulated printer and a real connection.
`cmake --build build/dev --target record-faults` writes what is expected anew, and `write-faults` this part.

A cell tells the exit code, what `error` says (without one the status, or how a change ended), how many
commands the printer has received whole, and whether a journal stands. Faults one below the other with the
same outcome on every link share a line; "–" is a fault that the link does not know, or that does not meet
the command there. What a line says of a moment lasts from it on; "once" is what passes: it meets one
command, and what was pulled out is back three seconds later.
)";

/// The brief lines of a row, by their headings.
std::map<std::string, std::string> Briefs(const std::string& p_strPath) {
    std::map<std::string, std::string> strBriefs;
    std::istringstream objLines(MFaultPage::Content(p_strPath));
    for (std::string strLine; std::getline(objLines, strLine);) {
        if (strLine.starts_with('[') && strLine.ends_with(']')) {
            std::getline(objLines, strBriefs[strLine.substr(1, strLine.size() - 2)]);
        }
    }
    return strBriefs;
}

/// A cell of the page: the exit code stands out.
std::string Shown(const std::string& p_strBrief) {
    const std::size_t iEnd = p_strBrief.find_first_of(" ,");
    return p_strBrief.empty() ? "–"
                              : "**" + p_strBrief.substr(0, iEnd) + "**" +
                                    p_strBrief.substr(std::min(iEnd, p_strBrief.size()));
}

/// The lines of one row's table, neighbours that are the same in one.
class Table {
public:
    explicit Table(std::map<std::string, std::string> p_strBriefs)
        : m_strBriefs(std::move(p_strBriefs)) {}

    void Add(const std::string& p_strWhen, const std::string& p_strFault,
             const MFaultCells::Cell& p_objCell) {
        Line strLine;
        MFaultCells::Cell objCell = p_objCell;
        bool bAny = false;
        for (std::size_t i = 0; i < Links.size(); ++i) {
            objCell.m_iLink = Links.at(i);
            const auto objFound = m_strBriefs.find(objCell.Heading());
            strLine.at(i) = Shown(objFound == m_strBriefs.end() ? "" : objFound->second);
            bAny = bAny || objFound != m_strBriefs.end();
        }
        if (!bAny) {
            return;
        }
        if (p_strWhen != m_strWhen || strLine != m_strLine) {
            Flush();
            m_bNew = p_strWhen != m_strWhen;
            m_strWhen = p_strWhen;
            m_strLine = strLine;
        }
        m_strFaults += (m_strFaults.empty() ? "" : "; ") + p_strFault;
    }

    std::string Text() {
        Flush();
        return "| When | What goes wrong | LAN | COM | USB |\n|---|---|---|---|---|\n" + m_strText;
    }
    [[nodiscard]] std::size_t Cells() const { return m_strBriefs.size(); }

private:
    void Flush() {
        if (m_strFaults.empty()) {
            return;
        }
        m_strText += "| " + (m_bNew ? m_strWhen : "") + " | " + m_strFaults + " |";
        for (const std::string& strCell : m_strLine) {
            m_strText += " " + strCell + " |";
        }
        m_strText += "\n";
        m_strFaults.clear();
    }

    std::map<std::string, std::string> m_strBriefs;
    std::string m_strText;
    std::string m_strWhen;
    std::string m_strFaults;
    Line m_strLine;
    bool m_bNew = false;
};

Table TableOf(const Row& p_objRow, const std::string& p_strFolder) {
    Table objTable(Briefs(p_strFolder + "/" + p_objRow.m_strName + ".txt"));
    objTable.Add("", "nothing", {&p_objRow});
    for (const Moment& objMoment : p_objRow.m_objMoments) {
        for (const bool bOnce : {false, true}) {
            for (const Fault& objFault : MFaults::All()) {
                objTable.Add(objMoment.m_strMeaning + (bOnce ? ", once" : ""),
                             std::string(objFault.m_strMeaning),
                             {&p_objRow, {}, &objMoment, &objFault, {objFault.m_iKind, 0, bOnce}});
            }
        }
    }
    return objTable;
}

}  // namespace

namespace MFaultPage {

std::string Part(const std::string& p_strFolder) {
    std::string strTables;
    std::size_t iCells = 0;
    for (const Row& objRow : MFaultRows::All()) {
        Table objTable = TableOf(objRow, p_strFolder);
        iCells += objTable.Cells();
        strTables += "\n### `" + objRow.CommandLine() + "`\n\n";
        if (!objRow.m_strBefore.empty()) {
            strTables +=
                "A change is left in the middle: its first command went out, and no answer "
                "came.\n\n";
        }
        strTables += objTable.Text();
    }
    return std::string(Begin) + "\n" + Beginning + std::to_string(iCells) + Explanation +
           strTables + End;
}

std::string PartOf(const std::string& p_strPage) {
    const std::size_t iBegin = p_strPage.find(Begin);
    const std::size_t iEnd = p_strPage.find(End);
    if (iBegin == std::string::npos || iEnd == std::string::npos) {
        return {};
    }
    return p_strPage.substr(iBegin, iEnd + std::string(End).size() - iBegin);
}

std::string Content(const std::string& p_strPath) {
    std::ifstream objFile(p_strPath, std::ios::binary);
    if (!objFile) {
        throw std::runtime_error("cannot read " + p_strPath);
    }
    return {std::istreambuf_iterator<char>(objFile), {}};
}

}  // namespace MFaultPage
