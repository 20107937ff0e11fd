#pragma once

#include "platform/CPlatform.h"
#include "platform/qt/CQtClock.h"
#include "platform/qt/CQtEventLoop.h"
#include "platform/qt/CQtFileStore.h"
#include "platform/qt/CQtSerialPort.h"
#include "platform/qt/CQtSerialPortLister.h"
#include "platform/qt/CQtTcpClient.h"
#include "platform/qt/CSystemLineState.h"
#include "platform/usb/CUsbLibrary.h"
#include "platform/widgets/CQtFileDialog.h"
#include "platform/widgets/CQtMessageBox.h"

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <string>

/// The real things behind every interface of the platform. Needs a QApplication.
class CQtPlatform {
public:
    /// @param p_strDeviceFolder where the serial port looks for its device.
    explicit CQtPlatform(const std::string& p_strDeviceFolder = MSerialPortName::DeviceFolder)
        : m_objMessageBox(m_objEventLoop)
        , m_objSerialPort(m_objLineState, p_strDeviceFolder)
        , m_objSerialPorts(p_strDeviceFolder)
        , m_objFileDialog(m_objEventLoop) {
        // The toolkit's file dialog remembers how it looked; here no longer than the program runs.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_objScratch.path());
    }

    /// The interfaces, valid as long as this lives.
    [[nodiscard]] CPlatform Interfaces() {
        return {{m_objEventLoop, m_objClock, m_objTcpClient, m_objSerialPort, m_objUsbLibrary},
                {m_objMessageBox, m_objFileDialog, m_objFileStore,
                 QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString()},
                &m_objSerialPorts};
    }

private:
    QTemporaryDir m_objScratch;
    CQtEventLoop m_objEventLoop;
    CQtClock m_objClock;
    CQtMessageBox m_objMessageBox;
    CQtTcpClient m_objTcpClient;
    CSystemLineState m_objLineState;
    CQtSerialPort m_objSerialPort;
    CQtSerialPortLister m_objSerialPorts;
    CUsbLibrary m_objUsbLibrary{m_objEventLoop};
    CQtFileDialog m_objFileDialog;
    CQtFileStore m_objFileStore;
};
