#include "cli/MMetrics.h"

#include "cli/MUtf8.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

/// A label with its value. The format knows three characters that need a "\" in front; what is no
/// UTF-8 would make the whole file unreadable.
std::string Label(std::string_view p_strName, std::string_view p_strValue) {
    std::string strValue;
    for (const char cValue : p_strValue) {
        if (cValue == '\n') {
            strValue += "\\n";
            continue;
        }
        if (cValue == '\\' || cValue == '"') {
            strValue += '\\';
        }
        strValue += cValue;
    }
    return std::string(p_strName) + "=\"" + MUtf8::Printable(strValue) + "\"";
}

std::string Metric(const std::string& p_strName, const std::string& p_strHelp,
                   const std::string& p_strLabels, const std::string& p_strValue) {
    return "# HELP " + p_strName + " " + p_strHelp + "\n# TYPE " + p_strName + " gauge\n" +
           p_strName + "{" + p_strLabels + "} " + p_strValue + "\n";
}

std::string Seconds(double p_dSeconds) {
    constexpr int iDecimals = 3;
    std::array<char, 64> arrText{};
    const auto objWritten = std::to_chars(arrText.data(), arrText.data() + arrText.size(),
                                          p_dSeconds, std::chars_format::fixed, iDecimals);
    return {arrText.data(), objWritten.ptr};
}

/// A code as a number, without zeros in front; empty for one that is none.
std::string Number(const std::string& p_strCode) {
    const bool bDigits = std::ranges::all_of(
        p_strCode, [](char p_cDigit) { return p_cDigit >= '0' && p_cDigit <= '9'; });
    return bDigits && !p_strCode.empty() ? std::to_string(std::stoi(p_strCode)) : "";
}

}  // namespace

namespace MMetrics {

std::string Text(std::string_view p_strTarget, const CStatusReport& p_objReport) {
    const std::string strTarget = Label("target", p_strTarget);
    const bool bAnswered = !p_objReport.m_strCode.empty();
    std::string strText =
        Metric("varden_printer_reachable", "Whether the printer has told its status.", strTarget,
               bAnswered ? "1" : "0");
    if (!bAnswered) {
        return strText;
    }
    const std::string strNumber = Number(p_objReport.m_strCode);
    if (!strNumber.empty()) {
        strText += Metric("varden_printer_status_code",
                          "The code of the printer's status; 0 is on line.", strTarget, strNumber);
    }
    strText += Metric("varden_printer_status_info", "The printer's status in words.",
                      strTarget + "," + Label("code", MUtf8::FromLatin1(p_objReport.m_strCode)) +
                          "," + Label("text", p_objReport.m_strText),
                      "1");
    return strText + Metric("varden_printer_status_seconds",
                            "How long the printer took to tell its status.", strTarget,
                            Seconds(p_objReport.m_dSeconds));
}

}  // namespace MMetrics
