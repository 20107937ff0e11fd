#pragma once

#include "link/CAnswerRouter.h"
#include "link/CBusy.h"
#include "link/CInterface.h"
#include "link/CLinkState.h"
#include "link/CWaiter.h"
#include "link/ILink.h"
#include "link/ISessionEvents.h"
#include "platform/ITcpClient.h"

/// The printer over the network: a TCP connection that stays open between commands.
class CLanLink : public ILink, private ITcpClientEvents {
public:
    /// None is owned; all outlive this. Takes the socket's events for its own lifetime.
    CLanLink(ITcpClient& p_objSocket, const CInterface& p_objInterface, CAnswerRouter& p_objRouter,
             CLinkState& p_objState, CBusy& p_objBusy, CWaiter& p_objWaiter,
             ISessionEvents& p_objEvents);
    ~CLanLink() override;
    CLanLink(const CLanLink&) = delete;
    CLanLink& operator=(const CLanLink&) = delete;

    [[nodiscard]] Answering HowItAnswers() const override { return Answering::Awaited; }

    /// Connects to the address and port of CInterface, busy meanwhile. Has no time limit of its
    /// own: the socket's failure to connect ends it, with LanNotConnected.
    /// True also when the printer has taken the connection and closed it at once.
    bool Open() override;

    /// True of an Open that waits for a connection, and of one that waits for the name of a host.
    void StopOpening() override;

    bool Close() override;

    /// How long Exchange waits for the network to take everything; 2 seconds unless it is set.
    void SetSendLimit(double p_dSeconds) { m_dSendSeconds = p_dSeconds; }

    /// Ends when the socket has sent everything. A socket that is not connected, an error of it,
    /// or no end within its limit gives LanNotSent, and so does another connection that a handler
    /// inside of the wait has made; after that time the connection is closed, so that what was not
    /// sent by then never is. A clock that starts again at midnight
    /// makes the limit longer, never shorter.
    bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                  std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength) override;

    [[nodiscard]] std::int64_t Connection() const override { return m_iConnection; }
    [[nodiscard]] CFailure WithoutConnection() const override;
    [[nodiscard]] CFailure Lost() const override;

private:
    void OnConnect() override;
    void OnClose() override;
    void OnSendComplete() override;
    void OnDataArrival() override;
    void OnError(const SocketError& p_objError) override;

    void SetRemote();
    void Disconnect();
    [[nodiscard]] bool WaitSent();
    [[nodiscard]] CFailure Failure(CFailure::Kind p_iKind) const;
    void TellState(CLinkStatus::State p_iState, const CFailure& p_objFailure = {});

    ITcpClient& m_objSocket;
    const CInterface& m_objInterface;
    CAnswerRouter& m_objRouter;
    CLinkState& m_objState;
    CBusy& m_objBusy;
    CWaiter& m_objWaiter;
    ISessionEvents& m_objEvents;
    double m_dSendSeconds = 2;
    /// Also when the printer has closed again since: one yield holds both where a box stood in it.
    bool m_bHasConnected = false;
    bool m_bStopped = false;         // the opening that waits was ended from outside
    std::int64_t m_iConnection = 0;  // how often it was opened or closed
    std::string m_strRemote;         // where Connect goes
    SocketError m_objError;          // the last one since it was opened
};
