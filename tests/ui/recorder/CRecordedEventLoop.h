#pragma once

#include "tests/fakes/CFakeEventLoop.h"
#include "tests/ui/recorder/CTranscript.h"

/// An event loop after each round of which the transcript looks at the window.
class CRecordedEventLoop : public CFakeEventLoop {
public:
    CRecordedEventLoop(CFakeClock& p_objClock, CTranscript& p_objTranscript)
        : CFakeEventLoop(p_objClock)
        , m_objTranscript(p_objTranscript) {}

    void Yield() override {
        CFakeEventLoop::Yield();
        m_objTranscript.Look();
    }

private:
    CTranscript& m_objTranscript;
};
