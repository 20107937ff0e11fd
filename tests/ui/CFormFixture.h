#pragma once

#include "platform/qt/CQtClock.h"
#include "platform/qt/CQtEventLoop.h"
#include "platform/qt/CQtFileStore.h"
#include "platform/widgets/CQtFileDialog.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/CRecordingSerialPort.h"
#include "tests/ui/CRecordingTcpClient.h"
#include "tests/ui/CRecordingUsbLibrary.h"

#include <QDir>
#include <gtest/gtest.h>

/// The open main window, with scripted message boxes and three links that lead nowhere and note
/// what is done with them.
class CFormFixture : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_objWindow.Open()); }

    QString Shown(const QString& p_strName) { return m_objWindow.Shown(p_strName); }

    CQtEventLoop m_objEventLoop;
    CQtClock m_objClock;
    CFakeMessageBox m_objBoxes;
    CCallList m_objCalls;  // of all three links
    CRecordingTcpClient m_objNetwork{m_objCalls};
    CRecordingSerialPort m_objSerialPort{m_objCalls};
    CRecordingUsbLibrary m_objUsbLibrary{m_objCalls};
    CQtFileDialog m_objFileDialog{m_objEventLoop};
    CQtFileStore m_objFileStore;
    CMainWindow m_objWindow{
        {{m_objEventLoop, m_objClock, m_objNetwork, m_objSerialPort, m_objUsbLibrary},
         {m_objBoxes, m_objFileDialog, m_objFileStore, QDir::tempPath().toStdString()}}};
};
