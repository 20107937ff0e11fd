#pragma once

#include "platform/qt/ILineState.h"

/// The system's own knowledge. Linux tells both, other systems the clear-to-send line only; a
/// pseudo-terminal tells nothing.
class CSystemLineState : public ILineState {
public:
    [[nodiscard]] Reading Read(Handle p_iPort) const override;
};
