#pragma once

#include "flows/CMaintenanceFlow.h"
#include "flows/CReadWriteFlow.h"
#include "flows/CSessionView.h"
#include "link/CPrinterSession.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/fuzz/CFuzzInput.h"

#include <functional>
#include <string>

/// The window's handlers over real links that stand on doubles. The input says, step by step, what
/// a person does and what happens on each line, at once or while a handler waits; after each step
/// that leaves nothing running everything has to be in order.
class CExchangeFuzz {
public:
    explicit CExchangeFuzz(MFuzz::Input p_objInput);

    void Run();

private:
    /// Boxes that a person answers, with events in between.
    class CBoxes : public IMessageBox {
    public:
        explicit CBoxes(CFakeEventLoop& p_objEventLoop)
            : m_objEventLoop(p_objEventLoop) {}

        int m_iYields = 0;  ///< how long a box stands

        void Show(const std::string& p_strText, MessageIcon p_iIcon,
                  const std::string& p_strTitle) override;
        bool AskYesNo(const std::string& /*p_strText*/) override { return true; }
        void Beep() override {}

    private:
        CFakeEventLoop& m_objEventLoop;
    };

    // What one step is made of. Each takes its arguments from the input.
    void Step();
    void Begin();
    void Happen();
    void SetLine();
    void SetTime();
    std::function<void()> TakeCommand();
    std::function<void()> TakeEvent();
    std::function<void()> TakeLinkEvent();
    std::string TakeAnswer();
    void TakeField();

    void RunAlone(const std::function<void()>& p_fnCommand);
    void Pause(std::int64_t p_iMilliseconds);
    void OpenLink(std::int16_t p_iInterface);
    void RequestClose();
    void RequireRest();
    void RequireSent();
    void RequireSerialSent();
    void ForgetSent();
    [[nodiscard]] std::size_t CountSent() const;

    CFuzzInput m_objInput;
    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CBoxes m_objBoxes{m_objEventLoop};
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CFakeSerialPort m_objPort{m_objEventLoop};
    CFakeUsbLibrary m_objLibrary{m_objEventLoop};
    CFakeExchangeView m_objView;
    CSessionView m_objEvents{m_objView, m_objBoxes};
    CItemManager m_objItems;
    CInterface m_objInterface;
    CPrinterSession m_objSession;
    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItems, m_objSession, m_objBoxes, m_objParameterPage,
                             m_objLanPage};
    CMaintenanceFlow m_objMaintenance{m_objSession};
    int m_iSteps = 0;
    bool m_bRunning = false;         // a handler, which the step has begun
    bool m_bLineCut = false;         // the serial line has been cut: what went out may be torn
    bool m_bBeyondMidnight = false;  // a wait may last until it is answered or ended
    bool m_bTooLong = false;         // a wait had to be ended
    std::int64_t m_iCloseYield = -1;
};
