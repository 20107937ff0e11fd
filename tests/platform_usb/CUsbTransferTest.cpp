#include "platform/usb/CUsbTransfer.h"

#include <gtest/gtest.h>

#include <libusb.h>

#include <vector>

namespace {

using End = CUsbTransfer::End;

struct Case {
    const char* m_strName;
    int m_iStatus;
    End m_iEnd;
};

class CUsbTransferEndTest : public ::testing::TestWithParam<Case> {};

TEST_P(CUsbTransferEndTest, IsWhatTheLibrarySays) {
    EXPECT_EQ(CUsbTransfer::EndOf(GetParam().m_iStatus), GetParam().m_iEnd);
}

// A time that is over ends a transfer as its owner's would, what has passed counts; a packet that
// has no room breaks it, and leaves the device usable.
INSTANTIATE_TEST_SUITE_P(
    , CUsbTransferEndTest,
    ::testing::Values(Case{"Completed", LIBUSB_TRANSFER_COMPLETED, End::Done},
                      Case{"Cancelled", LIBUSB_TRANSFER_CANCELLED, End::Stopped},
                      Case{"TimedOut", LIBUSB_TRANSFER_TIMED_OUT, End::Stopped},
                      Case{"Stall", LIBUSB_TRANSFER_STALL, End::Stalled},
                      Case{"Overflow", LIBUSB_TRANSFER_OVERFLOW, End::Stalled},
                      Case{"Error", LIBUSB_TRANSFER_ERROR, End::Lost},
                      Case{"NoDevice", LIBUSB_TRANSFER_NO_DEVICE, End::Lost},
                      Case{"NoneOfThese", 99, End::Lost}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
