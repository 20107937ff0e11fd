#include "simulator/CFaultSettings.h"

#include "simulator/MPrintable.h"

#include <vector>

std::string CFaultSettings::Describe() const {
    std::vector<std::string> strFaults;
    if (m_bSilent) {
        strFaults.emplace_back("no answers");
    }
    if (m_iDelay.count() > 0) {
        strFaults.push_back("answers late by " + std::to_string(m_iDelay.count()) + " ms");
    }
    if (m_iPieces > 0) {
        strFaults.push_back("answers in pieces of " + MPrintable::ByteCount(m_iPieces) + ", " +
                            std::to_string(m_iGap.count()) + " ms apart");
    }
    if (m_iCut) {
        strFaults.push_back("answers cut short after " + MPrintable::ByteCount(*m_iCut));
    }
    if (m_bJunk) {
        strFaults.emplace_back("junk in place of answers");
    }
    if (m_bJunkBefore) {
        strFaults.emplace_back("junk in front of answers");
    }
    if (m_iCloseAfter) {
        strFaults.push_back("connection closed after " + std::to_string(*m_iCloseAfter) +
                            (*m_iCloseAfter == 1 ? " command" : " commands"));
    }
    std::string strText;
    for (const std::string& strFault : strFaults) {
        strText += (strText.empty() ? "" : "; ") + strFault;
    }
    return strText.empty() ? "none" : strText;
}
