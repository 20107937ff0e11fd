#include "simulator/CStateFaults.h"

#include "simulator/MPrintable.h"

namespace {

std::string Joined(const std::vector<std::string>& p_strTexts, const char* p_strBetween) {
    std::string strText;
    for (const std::string& strPart : p_strTexts) {
        strText += (strText.empty() ? "" : p_strBetween) + strPart;
    }
    return strText;
}

std::string Quoted(const std::vector<std::string>& p_strHeads) {
    return '"' + Joined(p_strHeads, "\", \"") + '"';
}

std::string Half(const CStateFaults& p_objFaults) {
    std::vector<std::string> strParts;
    if (p_objFaults.m_iFieldsKept) {
        strParts.push_back(std::to_string(*p_objFaults.m_iFieldsKept) +
                           (*p_objFaults.m_iFieldsKept == 1 ? " field" : " fields"));
    }
    if (p_objFaults.m_iBytesKept) {
        strParts.push_back(MPrintable::ByteCount(*p_objFaults.m_iBytesKept));
    }
    return "only " + Joined(strParts, " and ") + " stored of " +
           (p_objFaults.m_strHalved.empty() ? "set commands" : Quoted({p_objFaults.m_strHalved}));
}

std::string PowerCut(const CStateFaults& p_objFaults) {
    return "power cut after " + MPrintable::ByteCount(*p_objFaults.m_iPowerCut) +
           (p_objFaults.m_iPowerBack
                ? ", back after " + std::to_string(p_objFaults.m_iPowerBack->count()) + " ms"
                : ", for good");
}

}  // namespace

std::string CStateFaults::Describe() const {
    std::vector<std::string> strFaults;
    if (!m_strRefused.empty()) {
        strFaults.push_back(
            Quoted(m_strRefused) + " refused" +
            (m_iRefusedOnly > 0 ? ", only number " + std::to_string(m_iRefusedOnly) : ""));
    }
    if (!m_strStuck.empty()) {
        strFaults.push_back(Joined(m_strStuck, ", ") + " never changed");
    }
    if (m_iFieldsKept || m_iBytesKept) {
        strFaults.push_back(Half(*this));
    }
    if (m_bForgets) {
        strFaults.emplace_back("settings lost without power");
    }
    if (m_iPowerCut) {
        strFaults.push_back(PowerCut(*this));
    }
    if (m_iMoves != Moves::Never) {
        strFaults.emplace_back(m_iMoves == Moves::AtOnce ? "moves at once"
                                                         : "moves after a restart");
    }
    return strFaults.empty() ? "none" : Joined(strFaults, "; ");
}
