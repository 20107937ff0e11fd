#include "cli/COutput.h"

#include "cli/MUtf8.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* Program = "varden: ";

Json TextOrNull(const std::string& p_strText) {
    return p_strText.empty() ? Json(nullptr) : Json(p_strText);
}

Json ErrorObject(const CCommandError::Texts& p_objTexts) {
    return {{"what", p_objTexts.m_strWhat},
            {"cause", TextOrNull(p_objTexts.m_strCause)},
            {"target", TextOrNull(p_objTexts.m_strTarget)},
            {"hint", TextOrNull(p_objTexts.m_strHint)}};
}

/// The object as it is printed. A file's name may be no UTF-8, and is told all the same.
std::string Printed(const Json& p_objJson) {
    constexpr int iIndent = 2;
    return p_objJson.dump(iIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

COutput::COutput(std::ostream& p_objOut, std::ostream& p_objError, IInterrupt& p_objInterrupt,
                 std::size_t p_iWidth, std::size_t p_iErrorWidth)
    : m_objOut(p_objOut)
    , m_objError(p_objError)
    , m_objInterrupt(p_objInterrupt)
    , m_iWidth(p_iWidth)
    , m_iErrorWidth(p_iErrorWidth) {}

void COutput::ChooseJson() {
    m_bJson = true;
    SetInterruption({"Interrupted", {}, {}, {}});
}

void COutput::SetInterruption(const CCommandError::Texts& p_objTexts) {
    if (m_bJson) {
        m_objInterrupt.SetLastWords(Printed({{"error", ErrorObject(p_objTexts)}}));
    }
    m_strInterruption =
        p_objTexts.m_strCause.empty() ? "" : Program + MUtf8::Printable(Line(p_objTexts)) + "\n";
    m_objInterrupt.SetLastNote((m_iProgress > 0 ? "\n" : "") + m_strInterruption);
}

std::string COutput::Line(const CCommandError::Texts& p_objTexts) {
    std::string strLine = p_objTexts.m_strWhat;
    for (const std::string& strFurther : {p_objTexts.m_strCause, p_objTexts.m_strHint}) {
        strLine += strFurther.empty() ? "" : ": " + strFurther;
    }
    return strLine;
}

void COutput::Say(std::string_view p_strLine) {
    People() << MUtf8::Printable(p_strLine) << "\n";
}

void COutput::Print(std::string_view p_strText) {
    People() << p_strText;
}

void COutput::Show(const CTable& p_objTable) {
    if (!m_bJson) {
        ClearProgress();
        m_objOut << p_objTable.Text(m_iWidth);
    }
}

void COutput::Note(std::string_view p_strLine) {
    ClearProgress();
    m_objError << Program << MUtf8::Printable(p_strLine) << "\n";
}

void COutput::Fail(const CCommandError& p_objError) {
    m_objJson["error"] = ErrorObject(p_objError.Words());
    Note(Line(p_objError.Words()));
}

void COutput::ShowProgress(std::string_view p_strLine) {
    if (m_iErrorWidth == 0) {
        return;
    }
    ClearProgress();
    std::string strLine = MUtf8::Printable(p_strLine);
    // A line that fills the terminal would go on in the next one, and stay there.
    while (MUtf8::Length(strLine) >= m_iErrorWidth) {
        strLine.pop_back();
    }
    m_iProgress = MUtf8::Length(strLine);
    m_objError << strLine << std::flush;
    // Whatever comes behind the program has a line of its own.
    m_objInterrupt.SetLastNote("\n" + m_strInterruption);
}

void COutput::ClearProgress() {
    if (m_iProgress > 0) {
        m_objError << "\r" << std::string(m_iProgress, ' ') << "\r" << std::flush;
        m_objInterrupt.SetLastNote(m_strInterruption);
        m_iProgress = 0;
    }
}

std::ostream& COutput::People() {
    ClearProgress();
    return m_bJson ? m_objError : m_objOut;
}

bool COutput::Finish() {
    ClearProgress();
    if (m_bJson) {
        m_objInterrupt.SetLastWords({});
        m_objOut << Printed(m_objJson);
    }
    m_objOut.flush();
    return m_objOut.good();
}
