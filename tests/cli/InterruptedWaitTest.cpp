#include "cli/CPrinterConnector.h"
#include "platform/usb/CUsbPrinterLister.h"
#include "tests/cli/CFakeInterrupt.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/platform_qt/CTestTerminal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <unistd.h>

// A wait for a printer sleeps long, and Ctrl-C ends it all the same at once.

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Comes from another thread, which is as sudden as a signal.
class CSuddenInterrupt : public CFakeInterrupt {
public:
    CSuddenInterrupt() { EXPECT_EQ(::pipe(m_iEnds), 0); }
    ~CSuddenInterrupt() override {
        ::close(m_iEnds[0]);
        ::close(m_iEnds[1]);
    }
    CSuddenInterrupt(const CSuddenInterrupt&) = delete;
    CSuddenInterrupt& operator=(const CSuddenInterrupt&) = delete;

    [[nodiscard]] int WakeHandle() const override { return m_iEnds[0]; }
    [[nodiscard]] bool IsPending() const override { return m_bCome; }

    void Come() {
        m_bCome = true;
        EXPECT_EQ(::write(m_iEnds[1], "", 1), 1);
    }

private:
    int m_iEnds[2]{};
    std::atomic<bool> m_bCome = false;
};

TEST(InterruptedWaitTest, AnInterruptWakesAWaitThatSleeps) {
    auto iBest = milliseconds::max();
    // A busy machine may be late in each single case. Nobody answers: without being woken the
    // first sleep would last for a quarter of a second.
    for (int i = 0; i < 5; ++i) {
        const CTestTerminal objLine;
        CUsbPrinterLister objUsbPrinters;
        CFakeSessionEvents objEvents;
        CSuddenInterrupt objInterrupt;
        CPrinterConnector objConnector(objUsbPrinters, objInterrupt, {3, 0.5, 3, 0});
        const auto objPrinter = objConnector.Connect(CTarget::Parse("com:" + objLine.Name()),
                                                     milliseconds(0), objEvents);
        steady_clock::time_point iCame;
        std::thread objOther([&] {
            std::this_thread::sleep_for(milliseconds(50));
            iCame = steady_clock::now();
            objInterrupt.Come();
        });
        EXPECT_FALSE(objPrinter->Status().m_objFailure.IsNone());
        const auto iEnd = steady_clock::now();
        objOther.join();
        iBest = std::min(iBest, std::chrono::duration_cast<milliseconds>(iEnd - iCame));
    }
    EXPECT_LT(iBest, milliseconds(100));
}

}  // namespace
