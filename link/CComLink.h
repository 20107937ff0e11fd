#pragma once

#include "link/CAnswerRouter.h"
#include "link/CInterface.h"
#include "link/CWaiter.h"
#include "link/ILink.h"
#include "platform/IMessageBox.h"
#include "platform/ISerialPort.h"

/// The printer on a serial port, which stays open between commands. No wait follows a command:
/// its answer is routed when it comes.
class CComLink : public ILink, private ISerialPortEvents {
public:
    /// None is owned; all outlive this. Takes the port's events for its own lifetime.
    CComLink(ISerialPort& p_objPort, const CInterface& p_objInterface, CAnswerRouter& p_objRouter,
             CLinkState& p_objState, IExchangeView& p_objView, CWaiter& p_objWaiter,
             IMessageBox& p_objMessageBox);
    ~CComLink() override;
    CComLink(const CComLink&) = delete;
    CComLink& operator=(const CComLink&) = delete;

    /// Opens the port with the settings of CInterface; true, after a yield, when it is open.
    bool Open() override;

    bool Close() override;

    /// Sends byte by byte, events running in between. Commands never mix: what is left of one that
    /// was begun further out goes out first. False, without a text, when the port is not open, and
    /// when it refuses a byte or is closed on the way.
    bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, std::string& p_strError,
                  std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength) override;

    [[nodiscard]] std::int64_t Connection() const override { return m_iConnection; }

private:
    /// A command on its way out, for as long as its Exchange lasts.
    struct Sending {
        const Bytes& m_objBytes;
        std::size_t m_iSent = 0;
        bool m_bFailed = false;

        [[nodiscard]] bool IsOver() const { return m_bFailed || m_iSent == m_objBytes.size(); }
    };

    void OnComm(std::int16_t p_iEvent) override;

    bool OpenComPort();
    void CloseComPort();
    [[nodiscard]] bool IsComPortOpen() const;
    bool WriteComBytes(const Bytes& p_objBytes);
    void WriteNextByte();
    void FailSendings();

    void HandleEvent(std::int16_t p_iEvent);
    void Receive();
    void ShowClearToSend();

    ISerialPort& m_objPort;
    const CInterface& m_objInterface;
    CAnswerRouter& m_objRouter;
    CLinkState& m_objState;
    IExchangeView& m_objView;
    CWaiter& m_objWaiter;
    IMessageBox& m_objMessageBox;
    std::vector<Sending*> m_objSendings;  // outermost first; not owned
    std::int64_t m_iConnection = 0;       // how often it was opened or closed
    std::int16_t m_iExpectedLength = 0;
    std::int16_t m_iOfflineShown = 0;  // 1 while "OFF LINE" stands
};
