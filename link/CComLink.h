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

    /// Sends byte by byte, events running in between. False, without a text, when the port is
    /// not open.
    bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, std::string& p_strError,
                  std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength) override;

private:
    void OnComm(std::int16_t p_iEvent) override;

    bool OpenComPort();
    void CloseComPort();
    [[nodiscard]] bool IsComPortOpen() const;
    bool WriteComBytes(const Bytes& p_objBytes);

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
    std::int16_t m_iExpectedLength = 0;
    std::int16_t m_iOfflineShown = 0;  // 1 while "OFF LINE" stands
};
