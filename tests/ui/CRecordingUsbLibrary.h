#pragma once

#include "tests/fakes/CAbsentUsbLibrary.h"
#include "tests/ui/CCallList.h"

/// A USB library that notes when the printer is opened and closed: "USB open", "USB close". There
/// is none, unless the test says so; it takes no commands.
class CRecordingUsbLibrary : public CAbsentUsbLibrary {
public:
    /// p_objCalls outlives this.
    explicit CRecordingUsbLibrary(CCallList& p_objCalls)
        : m_objCalls(p_objCalls) {}

    bool m_bPlugged = false;  ///< whether there is a printer

    std::int32_t Dll_openUSB() override {
        m_objCalls.Add("USB open");
        return m_bPlugged ? Opened : NotReady;
    }
    std::int32_t Dll_closeUSB() override {
        m_objCalls.Add("USB close");
        return 0;
    }

private:
    CCallList& m_objCalls;
};
