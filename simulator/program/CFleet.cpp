#include "simulator/program/CFleet.h"

#include "simulator/program/MAddress.h"

#include <limits>

CFleet::CFleet(const COptions& p_objOptions, COutlets& p_objOutlets, std::size_t p_iConnections)
    : m_objOptions(p_objOptions)
    , m_objRoom(p_iConnections) {
    m_objMembers.reserve(p_objOptions.m_iPrinters);
    for (std::size_t i = 1; i <= p_objOptions.m_iPrinters; ++i) {
        const bool bFaulty = p_objOptions.IsFaulty(i);
        m_objMembers.push_back(std::make_unique<Member>(
            CPrinterLog::Printer{i, p_objOptions.m_iPrinters == 1, "lan"},
            bFaulty ? p_objOptions.m_objFaults : CFaultSettings(), p_objOutlets, m_objRoom));
        p_objOptions.Prepare(m_objMembers.back()->m_objPrinter, i);
        p_objOutlets.Watch(m_objMembers.back()->m_objPrinter, m_objMembers.back()->m_objLog);
    }
    m_objRoom.OnChange([this] {
        for (const auto& objMember : m_objMembers) {
            objMember->m_objServer.FollowRoom();
        }
    });
}

bool CFleet::Listen() {
    // A port that is free at the first address may be taken at another: then another one is.
    constexpr int iMostTries = 20;
    const bool bAnyPort = m_objOptions.m_iPort == 0 && !m_objOptions.m_bByPort;
    int iTries = bAnyPort && m_objMembers.size() > 1 ? iMostTries : 1;
    while (!ListenOnce()) {
        if (--iTries == 0) {
            return false;
        }
        for (const auto& objMember : m_objMembers) {
            objMember->m_objServer.Close();
        }
    }
    for (const auto& objMember : m_objMembers) {
        objMember->m_objServer.Begin(m_objOptions.m_bOwnAddress);
    }
    return true;
}

bool CFleet::ListenOnce() {
    QHostAddress objHost = m_objOptions.m_objHost;
    std::uint16_t iPort = m_objOptions.m_iPort;
    for (const auto& objMember : m_objMembers) {
        CTcpServer& objServer = objMember->m_objServer;
        if (!objServer.Listen(objHost, iPort)) {
            m_strError = "Cannot listen on " + MAddress::Text(objHost, iPort) + ": " +
                         objServer.ErrorText().toStdString() + ".";
            return false;
        }
        if (!m_objOptions.m_bByPort) {
            iPort = objServer.Port();
            objHost = QHostAddress(objHost.toIPv4Address() + 1);
        } else if (iPort > 0) {
            ++iPort;
        }
    }
    return true;
}

std::vector<std::string> CFleet::Addresses() const {
    std::vector<std::string> strAddresses;
    strAddresses.reserve(m_objMembers.size());
    for (const auto& objMember : m_objMembers) {
        strAddresses.push_back(objMember->m_objServer.Address());
    }
    return strAddresses;
}

void CFleet::PowerCycle() {
    for (std::size_t i = 0; i < m_objMembers.size(); ++i) {
        if (m_objOptions.IsFaulty(i + 1)) {
            m_objMembers[i]->m_objServer.PowerCycle();
        }
    }
}

CCommandCounts CFleet::Counts() const {
    CCommandCounts objCounts;
    for (const auto& objMember : m_objMembers) {
        objCounts.Add(objMember->m_objPrinter.Counts());
    }
    return objCounts;
}
