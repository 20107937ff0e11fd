#include "platform/qt/CQtSerialPort.h"

#include "platform/qt/CDeviceAccess.h"
#include "platform/qt/MSerialOpenResult.h"
#include "platform/qt/MSerialSettings.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds LookInterval{250};

/// What the port holds of what has come until it is fetched.
constexpr qint64 ReadBufferBytes = 4096;

/// Ten times what the fastest of the lines brings.
constexpr CFloodGate::Share FloodShare{512, 128};

QSerialPort::Parity ToQt(MSerialSettings::Parity p_iParity) {
    switch (p_iParity) {
    case MSerialSettings::Parity::Even:
        return QSerialPort::EvenParity;
    case MSerialSettings::Parity::Odd:
        return QSerialPort::OddParity;
    case MSerialSettings::Parity::None:
        break;
    }
    return QSerialPort::NoParity;
}

/// The name to open a device by: its own, not an alias's, so that every program locks the same.
QString OwnName(const std::string& p_strDevice) {
    const QString strDevice = QFile::decodeName(p_strDevice.c_str());
#ifdef Q_OS_WIN
    return strDevice;
#else
    return QFileInfo(strDevice).canonicalFilePath();
#endif
}

/// Whether an error of an open port is none of the line's.
bool IsHarmless(QSerialPort::SerialPortError p_iError) {
    return p_iError == QSerialPort::NoError || p_iError == QSerialPort::TimeoutError ||
           p_iError == QSerialPort::UnsupportedOperationError;
}

}  // namespace

CQtSerialPort::CQtSerialPort(const ILineState& p_objLine, CSerialPlace p_objPlace)
    : CQtSerialPort(p_objLine) {
    m_objPlace = std::move(p_objPlace);
}

CQtSerialPort::CQtSerialPort(const ILineState& p_objLine, std::string p_strDeviceFolder)
    : m_objGate(FloodShare)
    , m_objWatch(p_objLine)
    , m_strDeviceFolder(std::move(p_strDeviceFolder)) {
    m_objPort.setReadBufferSize(ReadBufferBytes);
    m_objShut.setSingleShot(true);
    m_objShut.setTimerType(Qt::PreciseTimer);
    connect(&m_objShut, &QTimer::timeout, this, &CQtSerialPort::OpenGate);
    m_objLookTimer.setInterval(LookInterval);
    connect(&m_objLookTimer, &QTimer::timeout, this, &CQtSerialPort::LookAtLine);
    connect(&m_objPort, &QSerialPort::errorOccurred, this, &CQtSerialPort::HandleError);
    // Queued: whoever hears of an event may close the port, wait, or show a box, and the toolkit's
    // port must not be in the middle of something then.
    connect(&m_objPort, &QSerialPort::readyRead, this, &CQtSerialPort::HandleReadyRead,
            Qt::QueuedConnection);
    connect(&m_objPort, &QSerialPort::bytesWritten, this, &CQtSerialPort::RaiseSend,
            Qt::QueuedConnection);
}

CQtSerialPort::~CQtSerialPort() {
    m_objEvents = nullptr;
    Close();
}

std::int32_t CQtSerialPort::Open() {
    Close();
    m_objRefusal = {};
    const QString strDevice = Device();
    if (!SetUp(strDevice)) {
        return Refused(strDevice);
    }
    if (!m_objPort.open(QIODevice::ReadWrite)) {
        const std::int32_t iResult = MSerialOpenResult::Of(m_objPort.error(), strDevice);
        return iResult == AlreadyOpen ? iResult : Refused(strDevice);
    }
    m_objWatch.Begin(m_objPort.handle());
    m_objLookTimer.start();
    return Opened;
}

std::int32_t CQtSerialPort::Refused(const QString& p_strDevice) {
    const std::int32_t iNumber = MSerialOpenResult::Number(p_strDevice);
    m_objRefusal.m_strFile = QFile::encodeName(p_strDevice).toStdString();
    if (iNumber == EACCES) {
        const CDeviceState objState = CDeviceAccess().Look(m_objRefusal.m_strFile);
        m_objRefusal.m_strGroup = objState.m_strGroup;
        m_objRefusal.m_bMember = objState.m_bMember;
    }
    return iNumber;
}

QString CQtSerialPort::Device() const {
    return OwnName(m_objPlace ? m_objPlace->m_strDevice
                              : MSerialPortName::DeviceOf(m_iPort, m_strDeviceFolder));
}

bool CQtSerialPort::SetUp(const QString& p_strDevice) {
    const auto objValues =
        MSerialSettings::Parse(m_objPlace ? m_objPlace->m_strSettings : m_strSettings);
    if (!objValues || p_strDevice.isEmpty() || m_iHandshaking != 0) {
        return false;
    }
    m_objPort.setPortName(p_strDevice);
    return m_objPort.setBaudRate(objValues->m_iSpeed) &&
           m_objPort.setParity(ToQt(objValues->m_iParity)) &&
           m_objPort.setDataBits(objValues->m_iDataBits == 7 ? QSerialPort::Data7
                                                             : QSerialPort::Data8) &&
           m_objPort.setStopBits(objValues->m_iStopBits == 2 ? QSerialPort::TwoStop
                                                             : QSerialPort::OneStop) &&
           m_objPort.setFlowControl(QSerialPort::NoFlowControl);
}

void CQtSerialPort::Close() {
    m_objLookTimer.stop();
    m_objShut.stop();
    if (m_objPort.isOpen()) {
        m_objPort.close();
    }
    m_objPort.setReadBufferSize(ReadBufferBytes);
    // What was on its way to be told belongs to the port that was.
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    m_bGone = false;
}

bool CQtSerialPort::Output(std::span<const std::uint8_t> p_objBytes) {
    if (!IsOpen()) {
        return false;
    }
    const auto iCount = static_cast<qint64>(p_objBytes.size());
    const bool bTaken =
        m_objPort.write(reinterpret_cast<const char*>(p_objBytes.data()), iCount) == iCount;
    // Not with the next turn of the event loop, but now; and the port may turn out to be gone.
    m_objPort.flush();
    return bTaken && IsOpen();
}

std::vector<std::uint8_t> CQtSerialPort::Input() {
    if (!m_objPort.isOpen()) {
        return {};
    }
    const QByteArray objData =
        m_iInputLength == 0 ? m_objPort.readAll() : m_objPort.read(m_iInputLength);
    m_objGate.Take(static_cast<std::size_t>(objData.size()));
    return {objData.begin(), objData.end()};
}

void CQtSerialPort::HandleError(QSerialPort::SerialPortError p_iError) {
    if (!IsOpen() || IsHarmless(p_iError)) {
        return;
    }
    m_bGone = true;
    // The toolkit's port reports this from within, and again and again until it is closed.
    QMetaObject::invokeMethod(
        this,
        [this] {
            while (m_objShut.isActive()) {
                OpenGate();  // what has come is told before the port has gone
            }
            Close();
            if (m_objEvents != nullptr) {
                m_objEvents->OnGone();
            }
        },
        Qt::QueuedConnection);
}

void CQtSerialPort::HandleReadyRead() {
    if (!m_objShut.isActive()) {
        m_objGate.Arrive(std::chrono::steady_clock::now());
        RaiseReceive();
    }
}

void CQtSerialPort::ShutGate() {
    // A port that holds all that it may reads nothing.
    m_objPort.setReadBufferSize(std::max<qint64>(m_objPort.bytesAvailable(), 1));
    m_objShut.start(m_objGate.Left(std::chrono::steady_clock::now()));
}

void CQtSerialPort::OpenGate() {
    m_objShut.stop();
    m_objPort.setReadBufferSize(ReadBufferBytes);
    if (m_objPort.isOpen() && m_objPort.bytesAvailable() > 0) {
        HandleReadyRead();
    }
}

void CQtSerialPort::RaiseReceive() {
    // Characters that came before the port has gone are still told.
    while (m_objPort.isOpen() && m_objEvents != nullptr && m_iReceiveThreshold > 0 &&
           m_objPort.bytesAvailable() >= m_iReceiveThreshold) {
        const qint64 iBefore = m_objPort.bytesAvailable();
        Raise(SerialReceive);
        if (m_objPort.isOpen() && m_objPort.bytesAvailable() >= iBefore) {
            return;  // nobody takes them; the next character tells again
        }
        if (m_objPort.isOpen() && m_objGate.IsShut()) {
            ShutGate();
            return;
        }
    }
}

void CQtSerialPort::RaiseSend() {
    if (m_bRaisingSend || !IsOpen() || m_objPort.bytesToWrite() >= m_iSendThreshold) {
        return;
    }
    // Whoever hears of it yields while the next byte is waiting to be sent. This call is for that
    // yield to take: it does not sleep then, whatever else the system's event loop holds.
    QMetaObject::invokeMethod(
        this, [] {}, Qt::QueuedConnection);
    const QScopedValueRollback<bool> objRaising(m_bRaisingSend, true);
    Raise(SerialSend);
}

void CQtSerialPort::LookAtLine() {
    if (m_bLooking || !IsOpen()) {
        return;
    }
    const QScopedValueRollback<bool> objLooking(m_bLooking, true);
    const CSerialLineWatch::Change objChange = m_objWatch.Look(m_objPort.handle());
    if (!m_objWatch.SeesAnything()) {
        m_objLookTimer.stop();
    }
    if (objChange.m_bClearToSend) {
        Raise(SerialClearToSend);
    }
    if (objChange.m_bOverrun && IsOpen()) {
        Raise(SerialReceiveOverrun);
    }
}

void CQtSerialPort::Raise(std::int16_t p_iEvent) {
    if (m_objEvents != nullptr) {
        m_objEvents->OnComm(p_iEvent);
    }
}
