#pragma once

#include "simulator/CCommandCounts.h"
#include "simulator/program/COptions.h"
#include "simulator/program/COutlets.h"
#include "simulator/program/CTcpServer.h"

#include <memory>
#include <string>
#include <vector>

/// The printers on the network, one or many: each with its own settings and its own address, or its
/// own port of one address.
class CFleet {
public:
    /// As many printers as the options ask for, with the faults of each. Neither is owned; both
    /// must outlive this.
    /// @param p_iConnections how many connections all of them together may take at a time.
    CFleet(const COptions& p_objOptions, COutlets& p_objOutlets, std::size_t p_iConnections);
    ~CFleet() { m_objRoom.OnChange(nullptr); }
    CFleet(const CFleet&) = delete;
    CFleet& operator=(const CFleet&) = delete;

    /// Begins to listen with all of them. False when that cannot be, for one of them: ErrorText()
    /// says why.
    bool Listen();
    [[nodiscard]] const std::string& ErrorText() const { return m_strError; }

    /// Where each of them listens, in their order, such as 127.0.0.1:8000.
    [[nodiscard]] std::vector<std::string> Addresses() const;

    /// Takes the power of those with faults for a while.
    void PowerCycle();

    /// The commands that have come, to all of them.
    [[nodiscard]] CCommandCounts Counts() const;

private:
    struct Member {
        Member(CPrinterLog::Printer p_objWhose, const CFaultSettings& p_objFaults,
               COutlets& p_objOutlets, CConnectionRoom& p_objRoom)
            : m_objLog(std::move(p_objWhose), p_objOutlets.Lines(), p_objOutlets.Events())
            , m_objServer(m_objPrinter, p_objFaults, m_objLog, p_objRoom) {}

        CPrinter m_objPrinter;
        CPrinterLog m_objLog;
        CTcpServer m_objServer;
    };

    bool ListenOnce();

    const COptions& m_objOptions;
    CConnectionRoom m_objRoom;
    std::vector<std::unique_ptr<Member>> m_objMembers;
    std::string m_strError;
};
