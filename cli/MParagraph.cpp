#include "cli/MParagraph.h"

#include "cli/MUtf8.h"

#include <algorithm>

namespace {

/// Takes what stands before the next p_cEnd off the front of a text.
std::string_view Take(std::string_view& p_strRest, char p_cEnd) {
    const std::size_t iEnd = std::min(p_strRest.find(p_cEnd), p_strRest.size());
    const std::string_view strTaken = p_strRest.substr(0, iEnd);
    p_strRest.remove_prefix(std::min(iEnd + 1, p_strRest.size()));
    return strTaken;
}

void WrapLine(std::string_view p_strLine, std::size_t p_iWidth,
              std::vector<std::string>& p_strLines) {
    p_strLines.emplace_back();
    if (p_iWidth == 0) {
        p_strLines.back() = p_strLine;
        return;
    }
    while (!p_strLine.empty()) {
        const std::string_view strWord = Take(p_strLine, ' ');
        std::string& strLast = p_strLines.back();
        if (strLast.empty()) {
            strLast = strWord;
        } else if (MUtf8::Length(strLast) + 1 + MUtf8::Length(strWord) <= p_iWidth) {
            strLast += " " + std::string(strWord);
        } else {
            p_strLines.emplace_back(strWord);
        }
    }
}

}  // namespace

namespace MParagraph {

std::vector<std::string> Wrap(std::string_view p_strText, std::size_t p_iWidth) {
    std::vector<std::string> strLines;
    do {
        WrapLine(Take(p_strText, '\n'), p_iWidth, strLines);
    } while (!p_strText.empty());
    return strLines;
}

std::string Pad(std::string_view p_strText, std::size_t p_iWidth) {
    const std::size_t iLength = MUtf8::Length(p_strText);
    return std::string(p_strText) + std::string(p_iWidth - std::min(iLength, p_iWidth), ' ');
}

}  // namespace MParagraph
