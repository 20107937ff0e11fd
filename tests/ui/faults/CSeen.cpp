#include "tests/ui/faults/CSeen.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace {

using List = std::pair<const char*, CSeen::Texts CSeen::*>;
using Word = std::pair<const char*, std::string CSeen::*>;
using Number = std::pair<const char*, int CSeen::*>;

constexpr std::array<List, 7> Lists{{
    {"told", &CSeen::m_strTold},
    {"sent", &CSeen::m_strSent},
    {"later", &CSeen::m_strLater},
    {"behind", &CSeen::m_strBehind},
    {"read", &CSeen::m_strRead},
    {"other", &CSeen::m_strOther},
    {"shown", &CSeen::m_strShown},
}};
constexpr std::array<Word, 12> Words{{
    {"partly", &CSeen::m_strPartly},
    {"parameter page", &CSeen::m_strParameterPage},
    {"LAN page", &CSeen::m_strLanPage},
    {"status", &CSeen::m_strStatus},
    {"head check", &CSeen::m_strHeadCheck},
    {"link", &CSeen::m_strLink},
    {"doing", &CSeen::m_strDoing},
    {"page", &CSeen::m_strPage},
    {"disabled", &CSeen::m_strDisabled},
    {"held", &CSeen::m_strHeld},
    {"again", &CSeen::m_strAgain},
    {"FAILED", &CSeen::m_strFailure},
}};
constexpr std::array<Number, 5> Numbers{{
    {"running", &CSeen::m_iRunning},
    {"behind a failure", &CSeen::m_iBehindFailure},
    {"taken", &CSeen::m_iTaken},
    {"refused", &CSeen::m_iRefused},
    {"half seconds", &CSeen::m_iHalfSeconds},
}};
constexpr const char* Between = ": ";
constexpr char LineEnd = '\n';
constexpr char EndInside = '\x1E';  // of a line of a text that stands in a line

void Take(CSeen& p_objSeen, const std::string& p_strName, const std::string& p_strValue) {
    for (const auto& [strName, objMember] : Lists) {
        if (p_strName == strName) {
            (p_objSeen.*objMember).push_back(p_strValue);
        }
    }
    for (const auto& [strName, objMember] : Words) {
        if (p_strName == strName) {
            p_objSeen.*objMember = p_strValue;
        }
    }
    for (const auto& [strName, objMember] : Numbers) {
        if (p_strName == strName) {
            p_objSeen.*objMember = std::stoi(p_strValue);
        }
    }
    p_objSeen.m_bClosed |= p_strName == "closed";
}

}  // namespace

std::string CSeen::Text() const {
    std::string strText;
    for (const auto& [strName, objMember] : Lists) {
        for (const std::string& strValue : this->*objMember) {
            strText += strName + (Between + strValue) + "\n";
        }
    }
    for (const auto& [strName, objMember] : Words) {
        strText += strName + (Between + this->*objMember) + "\n";
    }
    for (const auto& [strName, objMember] : Numbers) {
        strText += strName + (Between + std::to_string(this->*objMember)) + "\n";
    }
    return strText + (m_bClosed ? "closed: yes\n" : "");
}

CSeen CSeen::FromText(const std::string& p_strText) {
    CSeen objSeen;
    std::istringstream objStream(p_strText);
    for (std::string strLine; std::getline(objStream, strLine);) {
        const std::size_t iBetween = strLine.find(Between);
        if (iBetween == std::string::npos) {
            objSeen.m_strFailure = "a line without a name: " + strLine;
        } else {
            Take(objSeen, strLine.substr(0, iBetween), strLine.substr(iBetween + 2));
        }
    }
    return objSeen;
}

void CSeen::SetAgain(const CSeen& p_objAgain) {
    m_strAgain = p_objAgain.Text();
    std::ranges::replace(m_strAgain, LineEnd, EndInside);
}

CSeen CSeen::Again() const {
    std::string strText = m_strAgain;
    std::ranges::replace(strText, EndInside, LineEnd);
    return FromText(strText);
}
