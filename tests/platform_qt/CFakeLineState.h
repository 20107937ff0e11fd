#pragma once

#include "platform/qt/ILineState.h"

/// A serial line as a test wants it; at first the system tells nothing of it.
class CFakeLineState : public ILineState {
public:
    Reading m_objReading;
    mutable int m_iReads = 0;

    [[nodiscard]] Reading Read(Handle /*p_iPort*/) const override {
        ++m_iReads;
        return m_objReading;
    }
};
