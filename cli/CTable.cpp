#include "cli/CTable.h"

#include "cli/MParagraph.h"
#include "cli/MUtf8.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::size_t Gap = 2;
constexpr std::size_t NarrowestColumn = 20;  // a narrower one is better left to the terminal

using Row = std::vector<std::string>;

/// A line without the blanks at its end.
std::string Line(std::string p_strText) {
    p_strText.erase(p_strText.find_last_not_of(' ') + 1);
    return p_strText + "\n";
}

}  // namespace

CTable::CTable(std::vector<std::string> p_strHeads) {
    m_strRows.push_back(std::move(p_strHeads));
}

void CTable::Add(const std::vector<std::string>& p_strCells) {
    Row& strRow = m_strRows.emplace_back();
    std::ranges::transform(p_strCells, std::back_inserter(strRow), MUtf8::Printable);
    strRow.resize(m_strRows.front().size());
}

std::string CTable::Text(std::size_t p_iWidth) const {
    const std::size_t iLast = m_strRows.front().size() - 1;
    std::vector<std::size_t> iWidths(iLast, 0);
    std::size_t iIndent = 0;
    for (std::size_t i = 0; i < iLast; ++i) {
        for (const Row& strRow : m_strRows) {
            iWidths[i] = std::max(iWidths[i], MUtf8::Length(strRow[i]) + Gap);
        }
        iIndent += iWidths[i];
    }
    const std::size_t iRoom = p_iWidth < iIndent + NarrowestColumn ? 0 : p_iWidth - iIndent;
    std::string strText;
    for (const Row& strRow : m_strRows) {
        std::string strBegin;
        for (std::size_t i = 0; i < iLast; ++i) {
            strBegin += MParagraph::Pad(strRow[i], iWidths[i]);
        }
        for (const std::string& strPart : MParagraph::Wrap(strRow[iLast], iRoom)) {
            strText += Line(strBegin + strPart);
            strBegin.assign(iIndent, ' ');
        }
    }
    return strText;
}
