#pragma once

#include "flows/CReadWriteFlow.h"
#include "link/CPrinterSession.h"
#include "platform/IMessageBox.h"
#include "platform/qt/CQtEventLoop.h"
#include "platform/qt/CQtSerialPort.h"
#include "platform/qt/CQtTcpClient.h"
#include "platform/qt/CSystemLineState.h"
#include "platform/usb/CUsbLibrary.h"
#include "tests/fakes/CHastyClock.h"

#include <cstdint>
#include <string>

/// Sleeps as much less as its clock is in a hurry.
class CHastyLoop : public IEventLoop {
public:
    explicit CHastyLoop(double p_dHaste)
        : m_dHaste(p_dHaste) {}

    void Yield() override { m_objLoop.Yield(); }
    void YieldFor(double p_dSeconds) override { m_objLoop.YieldFor(p_dSeconds / m_dHaste); }
    [[nodiscard]] bool IsClosing() const override { return m_objLoop.IsClosing(); }
    void RequestClose() override { m_objLoop.RequestClose(); }

private:
    double m_dHaste;
    CQtEventLoop m_objLoop;
};

/// Hears of everything and keeps nothing.
class CDeafEvents : public ISessionEvents {
public:
    void OnBusy(bool /*p_bBusy*/) override {}
    void OnLinkStatus(const CLinkStatus& /*p_objStatus*/) override {}
    void OnStep(std::int16_t /*p_iStep*/, std::int16_t /*p_iSteps*/) override {}
    void OnWaiting(std::int16_t /*p_iSeconds*/) override {}
    void OnStatus(const std::string& /*p_strText*/) override {}
    void OnHeadCheck(const std::string& /*p_strText*/) override {}
    void OnFailure(const CFailure& /*p_objFailure*/) override {}
    void OnCommandFailed(const CFailure& /*p_objFailure*/) override {}
};

/// Boxes that nobody has to answer.
class CPassingBoxes : public IMessageBox {
public:
    void Show(const std::string& /*p_strText*/, MessageIcon /*p_iIcon*/,
              const std::string& /*p_strTitle*/) override {}
    bool AskYesNo(const std::string& /*p_strText*/) override { return true; }
    void Beep() override {}
};

/// A page that shows everything and knows how the last flow has ended.
class CPatientPage : public ISettingsPage {
public:
    bool Refresh() override { return true; }
    bool Store() override { return true; }
    void NoteEnd(const CPageNote& p_objNote) override { m_iLast = p_objNote.m_iKind; }

    CPageNote::Kind m_iLast = CPageNote::Kind::Unsendable;
};

/// The window's session on real links, without the window, in a hurry: so many of its seconds pass
/// in each second.
class CLongSession {
public:
    /// @param p_strDevices the folder with the serial lines, "com1" and so on.
    CLongSession(double p_dHaste, const std::string& p_strDevices);

    /// Opens the link to a place: "127.0.0.1:8000", "com1" or "usb".
    bool Open(const std::string& p_strPlace);
    void Close();

    /// True when an answer has come.
    bool AskStatus();
    /// True when the settings have come, or gone out, whole.
    bool Read();
    bool Set();

private:
    CHastyClock m_objClock;
    CHastyLoop m_objLoop;
    CQtTcpClient m_objTcpClient;
    CSystemLineState m_objLineState;
    CQtSerialPort m_objSerialPort;
    CUsbLibrary m_objUsbLibrary{m_objLoop};
    CItemManager m_objItems;
    CInterface m_objInterface;
    CDeafEvents m_objEvents;
    CPassingBoxes m_objBoxes;
    CPatientPage m_objPage;
    CPrinterSession m_objSession;
    CReadWriteFlow m_objFlow;
};
