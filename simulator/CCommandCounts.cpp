#include "simulator/CCommandCounts.h"

using MCommandKind::Kind;

void CCommandCounts::Add(Kind p_iKind, bool p_bAccepted) {
    Count& objCount = m_objCounts.at(static_cast<std::size_t>(p_iKind));
    ++(p_bAccepted ? objCount.m_iAccepted : objCount.m_iRefused);
}

void CCommandCounts::Add(const CCommandCounts& p_objOther) {
    for (std::size_t i = 0; i < m_objCounts.size(); ++i) {
        m_objCounts.at(i).m_iAccepted += p_objOther.m_objCounts.at(i).m_iAccepted;
        m_objCounts.at(i).m_iRefused += p_objOther.m_objCounts.at(i).m_iRefused;
    }
}

CCommandCounts::Count CCommandCounts::Of(Kind p_iKind) const {
    return m_objCounts.at(static_cast<std::size_t>(p_iKind));
}

std::string CCommandCounts::Describe() const {
    std::string strText;
    for (std::size_t i = 0; i < m_objCounts.size(); ++i) {
        const Count& objCount = m_objCounts.at(i);
        const std::size_t iAll = objCount.m_iAccepted + objCount.m_iRefused;
        if (iAll == 0) {
            continue;
        }
        strText +=
            std::string(MCommandKind::Name(static_cast<Kind>(i))) + ": " + std::to_string(iAll);
        if (objCount.m_iRefused != 0) {
            strText += ", refused " + std::to_string(objCount.m_iRefused);
        }
        strText += '\n';
    }
    return strText;
}
