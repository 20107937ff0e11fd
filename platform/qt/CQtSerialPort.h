#pragma once

#include "platform/ISerialPort.h"
#include "platform/qt/CFloodGate.h"
#include "platform/qt/CSerialLineWatch.h"
#include "platform/qt/CSerialPlace.h"
#include "platform/qt/MSerialPortName.h"

#include <QSerialPort>
#include <QTimer>

#include <optional>

/// A serial port of the toolkit, without handshaking.
///
/// A port that vanishes while it is open (its adapter is pulled out) is closed from then on, and
/// is told; Open opens it again when it is back. The line state and the count of overruns
/// are looked at four times a second, where the system tells them.
///
/// A failure of Open other than AlreadyOpen is the system's error number (errno), ENOENT for a port
/// that is not there and ENOTTY for what is no serial port at all.
///
/// Of a flood that no serial line brings, but a pseudo-terminal or an adapter may, it takes so much
/// in a time that the processor is left to others.
///
/// One that is made for a certain place stays there: SetSettings and SetPortNumber change nothing.
class CQtSerialPort : public QObject, public ISerialPort {
public:
    /// @param p_objLine not owned, outlives this.
    /// @param p_strDeviceFolder where MSerialPortName looks for the port.
    explicit CQtSerialPort(const ILineState& p_objLine,
                           std::string p_strDeviceFolder = MSerialPortName::DeviceFolder);
    /// The port of p_objPlace. p_objLine as above.
    CQtSerialPort(const ILineState& p_objLine, CSerialPlace p_objPlace);
    ~CQtSerialPort() override;
    CQtSerialPort(const CQtSerialPort&) = delete;
    CQtSerialPort& operator=(const CQtSerialPort&) = delete;

    void SetEvents(ISerialPortEvents* p_objEvents) override { m_objEvents = p_objEvents; }

    // These three count from the next Open on.
    void SetSettings(const std::string& p_strSettings) override { m_strSettings = p_strSettings; }
    /// Anything but 0 makes Open fail.
    void SetHandshaking(std::int16_t p_iHandshaking) override { m_iHandshaking = p_iHandshaking; }
    void SetPortNumber(std::int16_t p_iPort) override { m_iPort = p_iPort; }

    // These count at once.
    void SetReceiveThreshold(std::int16_t p_iCount) override { m_iReceiveThreshold = p_iCount; }
    void SetInputLength(std::int16_t p_iCount) override { m_iInputLength = p_iCount; }
    void SetSendThreshold(std::int16_t p_iCount) override { m_iSendThreshold = p_iCount; }

    /// A port that is open is closed first.
    std::int32_t Open() override;
    [[nodiscard]] DeviceRefusal Refusal() const override { return m_objRefusal; }
    void Close() override;
    [[nodiscard]] bool IsOpen() const override { return m_objPort.isOpen() && !m_bGone; }

    /// The bytes are the system's before this returns, if it takes them.
    bool Output(std::span<const std::uint8_t> p_objBytes) override;
    std::vector<std::uint8_t> Input() override;
    [[nodiscard]] bool ClearToSend() const override { return m_objWatch.ClearToSend(); }

private:
    [[nodiscard]] QString Device() const;
    bool SetUp(const QString& p_strDevice);
    /// Finds out why the device does not open, and gives it as Open does.
    std::int32_t Refused(const QString& p_strDevice);
    void HandleError(QSerialPort::SerialPortError p_iError);
    void HandleReadyRead();
    /// Tells each character, until there is none or the gate is shut.
    void RaiseReceive();
    void ShutGate();
    void OpenGate();
    void RaiseSend();
    void LookAtLine();
    void Raise(std::int16_t p_iEvent);

    QSerialPort m_objPort;
    QTimer m_objLookTimer;
    CFloodGate m_objGate;
    QTimer m_objShut;  // runs while the gate is shut
    CSerialLineWatch m_objWatch;
    ISerialPortEvents* m_objEvents = nullptr;
    std::string m_strDeviceFolder;
    std::optional<CSerialPlace> m_objPlace;
    std::string m_strSettings;
    std::int16_t m_iHandshaking = 0;
    std::int16_t m_iReceiveThreshold = 0;
    std::int16_t m_iInputLength = 0;
    std::int16_t m_iSendThreshold = 0;
    std::int16_t m_iPort = 1;
    DeviceRefusal m_objRefusal;
    bool m_bGone = false;         // has failed and waits to be closed
    bool m_bRaisingSend = false;  // a send event is being handled
    bool m_bLooking = false;      // an event of the line is being handled
};
