#pragma once

#include "platform/IUsbLibrary.h"

/// A computer without a printer on USB.
class CAbsentUsbLibrary : public IUsbLibrary {
public:
    std::int32_t Dll_openUSB() override { return NotReady; }
    std::int32_t Dll_sendUSB(std::span<const std::uint8_t> /*p_objBytes*/) override {
        return Failed;
    }
    std::int32_t Dll_rcvUSB(std::span<std::uint8_t> /*p_objBuffer*/) override { return Failed; }
    std::int32_t Dll_closeUSB() override { return 0; }
};
