#pragma once

#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/ui/recorder/CTranscript.h"

#include <functional>
#include <string>

/// A USB library each call of which stands in the transcript.
class CRecordedUsbLibrary : public CFakeUsbLibrary {
public:
    CRecordedUsbLibrary(CFakeEventLoop& p_objEventLoop, CTranscript& p_objTranscript)
        : CFakeUsbLibrary(p_objEventLoop)
        , m_objTranscript(p_objTranscript) {}

    /// Called when a command is about to be sent; may change how that goes.
    std::function<void()> m_fnBegins;

    std::int32_t Dll_openUSB() override {
        const std::int32_t iResult = CFakeUsbLibrary::Dll_openUSB();
        m_objTranscript.Add("USB opens: " + std::to_string(iResult));
        return iResult;
    }

    std::int32_t Dll_sendUSB(std::span<const std::uint8_t> p_objBytes) override {
        m_fnBegins();
        m_objTranscript.Bytes(
            m_iSendResult < 0 ? "USB refuses" : "USB sends",
            {reinterpret_cast<const char*>(p_objBytes.data()), p_objBytes.size()});
        return CFakeUsbLibrary::Dll_sendUSB(p_objBytes);
    }

    std::int32_t Dll_rcvUSB(std::span<std::uint8_t> p_objBuffer) override {
        m_objTranscript.Add("USB receives " + std::to_string(p_objBuffer.size()) + " at most");
        const std::int32_t iResult = CFakeUsbLibrary::Dll_rcvUSB(p_objBuffer);
        if (iResult > 0) {
            m_objTranscript.Add(
                "USB gets " +
                CTranscript::Printable({reinterpret_cast<const char*>(p_objBuffer.data()),
                                        static_cast<std::size_t>(iResult)}));
        } else {
            m_objTranscript.Add("USB gets nothing: " + std::to_string(iResult));
        }
        return iResult;
    }

    std::int32_t Dll_closeUSB() override {
        m_objTranscript.Add("USB closes");
        return CFakeUsbLibrary::Dll_closeUSB();
    }

private:
    CTranscript& m_objTranscript;
};
