#include "tests/cli/CMetricsReader.h"

#include "cli/MUtf8.h"

#include <algorithm>
#include <regex>
#include <sstream>

CMetricsReader::CMetricsReader(const std::string& p_strText) {
    Expect(!p_strText.empty() && p_strText.back() == '\n', "the last line has no end");
    // What is no UTF-8 has no place in it, nor has what steers a terminal.
    std::string strLine;
    for (std::istringstream objLines(p_strText); std::getline(objLines, strLine);) {
        Expect(MUtf8::Printable(strLine) == strLine, "not to be printed: " + strLine);
        if (strLine.starts_with("#")) {
            TakeComment(strLine);
        } else {
            TakeSample(strLine);
        }
    }
    Expect(m_strHelped == m_strTyped && m_objSamples.contains(m_strTyped), "no sample at the end");
}

void CMetricsReader::TakeComment(const std::string& p_strLine) {
    static const std::regex objHelp("# HELP ([a-zA-Z_:][a-zA-Z0-9_:]*) ([^\\\\]+)");
    static const std::regex objType("# TYPE ([a-zA-Z_:][a-zA-Z0-9_:]*) (counter|gauge)");
    std::smatch objMatch;
    if (std::regex_match(p_strLine, objMatch, objHelp)) {
        Expect(m_strHelped == m_strTyped, "HELP without TYPE: " + m_strHelped);
        Expect(std::ranges::find(m_strNames, objMatch[1].str()) == m_strNames.end(),
               "there twice: " + p_strLine);
        m_strHelped = objMatch[1];
    } else if (std::regex_match(p_strLine, objMatch, objType)) {
        Expect(m_strHelped == objMatch[1], "TYPE without HELP: " + p_strLine);
        m_strTyped = objMatch[1];
        m_strNames.push_back(m_strTyped);
    } else {
        Expect(false, "no comment: " + p_strLine);
    }
}

void CMetricsReader::TakeSample(const std::string& p_strLine) {
    static const std::regex objValue("[-+]?([0-9]+(\\.[0-9]+)?|NaN|Inf)");
    const std::size_t iBrace = p_strLine.find('{');
    const std::string strName = p_strLine.substr(0, std::min(iBrace, p_strLine.find(' ')));
    Expect(strName == m_strTyped, "a sample without TYPE: " + p_strLine);
    Expect(!m_objSamples.contains(strName), "a sample twice: " + p_strLine);
    Sample objSample;
    std::size_t iPlace = strName.size();
    if (iBrace == iPlace) {
        iPlace = TakeLabels(p_strLine, iPlace + 1, objSample);
    }
    const std::string strValue = p_strLine.substr(std::min(iPlace, p_strLine.size()));
    const bool bValue = strValue.starts_with(' ') && std::regex_match(strValue.substr(1), objValue);
    Expect(bValue, "no value: " + p_strLine);
    objSample.m_dValue = bValue ? std::stod(strValue) : 0;
    m_objSamples[strName] = objSample;
}

std::size_t CMetricsReader::TakeLabels(const std::string& p_strLine, std::size_t p_iPlace,
                                       Sample& p_objSample) {
    static const std::regex objLabel(
        R"re(([a-zA-Z_][a-zA-Z0-9_]*)="((?:[^"\\]|\\\\|\\"|\\n)*)"([,}]))re");
    std::smatch objMatch;
    auto objFrom = p_strLine.begin() + static_cast<std::ptrdiff_t>(p_iPlace);
    do {
        if (!std::regex_search(objFrom, p_strLine.end(), objMatch, objLabel,
                               std::regex_constants::match_continuous)) {
            Expect(false, "no label: " + std::string(objFrom, p_strLine.end()));
            return p_strLine.size();
        }
        std::string strValue;
        const std::string strWritten = objMatch[2];
        for (std::size_t i = 0; i < strWritten.size(); ++i) {
            const bool bEscaped = strWritten[i] == '\\';
            i += bEscaped ? 1 : 0;
            strValue += bEscaped && strWritten[i] == 'n' ? '\n' : strWritten[i];
        }
        Expect(p_objSample.m_strLabels.emplace(objMatch[1], strValue).second,
               "a label twice: " + p_strLine);
        objFrom += objMatch.length();
    } while (objMatch[3] == ",");
    return static_cast<std::size_t>(objFrom - p_strLine.begin());
}

void CMetricsReader::Expect(bool p_bRight, const std::string& p_strWhat) {
    if (!p_bRight && m_strComplaint.empty()) {
        m_strComplaint = p_strWhat;
    }
}
