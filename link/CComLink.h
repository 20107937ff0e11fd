#pragma once

#include "link/CAnswerRouter.h"
#include "link/CInterface.h"
#include "link/CWaiter.h"
#include "link/ILink.h"
#include "link/ISessionEvents.h"
#include "platform/ISerialPort.h"

/// The printer on a serial port, which stays open between commands. No wait follows a command:
/// its answer is routed when it comes.
class CComLink : public ILink, private ISerialPortEvents {
public:
    /// None is owned; all outlive this. Takes the port's events for its own lifetime.
    CComLink(ISerialPort& p_objPort, const CInterface& p_objInterface, CAnswerRouter& p_objRouter,
             CLinkState& p_objState, ISessionEvents& p_objEvents, CWaiter& p_objWaiter);
    ~CComLink() override;
    CComLink(const CComLink&) = delete;
    CComLink& operator=(const CComLink&) = delete;

    [[nodiscard]] Answering HowItAnswers() const override { return Answering::Later; }

    /// Opens the port with the settings of CInterface; true, after a yield, when it is open.
    bool Open() override;

    bool Close() override;

    /// Sends byte by byte, events running in between. Commands never mix: what is left of one that
    /// was begun further out goes out first. False when the port is not open, and when it refuses a
    /// byte or is closed on the way.
    bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                  std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength) override;

    [[nodiscard]] std::int64_t Connection() const override { return m_iConnection; }
    [[nodiscard]] CFailure Lost() const override;

private:
    /// A command on its way out, for as long as its Exchange lasts.
    struct Sending {
        const Bytes& m_objBytes;
        std::size_t m_iSent = 0;
        bool m_bFailed = false;

        [[nodiscard]] bool IsOver() const { return m_bFailed || m_iSent == m_objBytes.size(); }
    };

    void OnComm(std::int16_t p_iEvent) override;
    void OnGone() override;

    bool OpenComPort();
    void CloseComPort();
    [[nodiscard]] bool IsComPortOpen() const;
    bool WriteComBytes(const Bytes& p_objBytes);
    void WriteNextByte();
    void FailSendings();

    void HandleEvent(std::int16_t p_iEvent);
    void Receive();
    void ShowClearToSend();

    [[nodiscard]] CFailure Failure(CFailure::Kind p_iKind, std::int32_t p_iNumber = 0) const;
    void TellState(CLinkStatus::State p_iState, const CFailure& p_objFailure = {});
    void Tell(const CFailure& p_objFailure);

    ISerialPort& m_objPort;
    const CInterface& m_objInterface;
    CAnswerRouter& m_objRouter;
    CLinkState& m_objState;
    ISessionEvents& m_objEvents;
    CWaiter& m_objWaiter;
    std::vector<Sending*> m_objSendings;  // outermost first; not owned
    std::int64_t m_iConnection = 0;       // how often it was opened or closed
    std::string m_strPort;                // "COM1", as of the last opening
    std::string m_strLine;                // "9600,E,8,1", likewise
    bool m_bOpened = false;               // opened and not closed since, though it may be gone
    bool m_bNotSentTold = false;          // the last state told is that a command was not sent
    std::int16_t m_iExpectedLength = 0;
    std::int16_t m_iOfflineShown = 0;  // 1 while "OFF LINE" stands
};
