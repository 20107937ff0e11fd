#include "cli/MStatusText.h"

#include "cli/MUtf8.h"
#include "protocol/MStatus.h"

namespace {

using Json = nlohmann::ordered_json;

/// The blanks in front of some texts are for the window's label.
std::string TextOf(const CStatusReport& p_objReport) {
    const std::size_t iBegin = p_objReport.m_strText.find_first_not_of(' ');
    return iBegin == std::string::npos ? "" : p_objReport.m_strText.substr(iBegin);
}

}  // namespace

namespace MStatusText {

bool IsKnown(const std::string& p_strCode) {
    std::string strText;
    bool bKnown = false;
    MStatus::StatusText(p_strCode, strText, bKnown);
    return bKnown;
}

std::string Line(const CStatusReport& p_objReport) {
    const std::string strCode = MUtf8::FromLatin1(p_objReport.m_strCode);
    if (!IsKnown(p_objReport.m_strCode)) {
        return strCode + " (an unknown code)";
    }
    const std::string strText = TextOf(p_objReport);
    return strText.empty() ? strCode : strCode + " " + strText;
}

void Put(const CStatusReport& p_objReport, Json& p_objJson) {
    const bool bAnswered = !p_objReport.m_strCode.empty();
    const std::string strText = TextOf(p_objReport);
    p_objJson["code"] = bAnswered ? Json(MUtf8::FromLatin1(p_objReport.m_strCode)) : Json(nullptr);
    p_objJson["text"] = strText.empty() ? Json(nullptr) : Json(strText);
    p_objJson["known"] = bAnswered ? Json(IsKnown(p_objReport.m_strCode)) : Json(nullptr);
}

}  // namespace MStatusText
