#include "tests/fuzz/MFuzzTargets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <string_view>

// One program for all targets: the variable VARDEN_FUZZ_TARGET names the one to run, which
// libFuzzer's own ways of starting the program again hand on.

namespace {

struct Row {
    std::string_view m_strName;
    void (*m_fnRun)(MFuzz::Input);
};

constexpr std::array<Row, 12> Rows{{
    {"parameter-file", &MFuzzTargets::ParameterFile},
    {"lan-file", &MFuzzTargets::LanFile},
    {"json-file", &MFuzzTargets::JsonFile},
    {"lan-stream", &MFuzzTargets::LanStream},
    {"serial-line", &MFuzzTargets::SerialLine},
    {"usb-answer", &MFuzzTargets::UsbAnswer},
    {"device-id", &MFuzzTargets::DeviceId},
    {"distribute", &MFuzzTargets::Distribute},
    {"target", &MFuzzTargets::Target},
    {"words", &MFuzzTargets::Words},
    {"command-reader", &MFuzzTargets::CommandReader},
    {"exchange", &MFuzzTargets::Exchange},
}};

/// The doubles of tests/fakes complain by failing a test, of which there is none here.
class CComplaints : public ::testing::EmptyTestEventListener {
    void OnTestPartResult(const ::testing::TestPartResult& p_objResult) override {
        MFuzz::Require(!p_objResult.failed(), p_objResult.message());
    }
};

const Row* objChosen = nullptr;

}  // namespace

// The names are libFuzzer's.
extern "C" int LLVMFuzzerInitialize(int* /*p_iCount*/, char*** /*p_strArguments*/) {
    const char* const strName = std::getenv("VARDEN_FUZZ_TARGET");
    const auto* const objFound = std::ranges::find(
        Rows, std::string_view(strName == nullptr ? "" : strName), &Row::m_strName);
    if (objFound == Rows.end()) {
        std::cerr << "VARDEN_FUZZ_TARGET has to name one of these:";
        for (const Row& objRow : Rows) {
            std::cerr << ' ' << objRow.m_strName;
        }
        std::cerr << std::endl;
        std::exit(EXIT_FAILURE);
    }
    objChosen = objFound;
    ::testing::UnitTest::GetInstance()->listeners().Append(new CComplaints);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* p_arrBytes, std::size_t p_iCount) {
    objChosen->m_fnRun({p_arrBytes, p_iCount});
    return 0;
}
