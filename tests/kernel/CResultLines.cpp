#include "tests/kernel/CResultLines.h"

#include <iomanip>
#include <iostream>

namespace {

const char* Word(bool p_bPassed) {
    return p_bPassed ? "passed  " : "FAILED  ";
}

}  // namespace

void CResultLines::OnTestPartResult(const ::testing::TestPartResult& p_objResult) {
    if (p_objResult.failed()) {
        std::cout << (p_objResult.file_name() != nullptr ? p_objResult.file_name() : "?") << ':'
                  << p_objResult.line_number() << ": " << p_objResult.message() << std::endl;
    }
}

void CResultLines::OnTestEnd(const ::testing::TestInfo& p_objTest) {
    constexpr double iMilliseconds = 1000.0;
    const ::testing::TestResult& objResult = *p_objTest.result();
    std::cout << Word(objResult.Passed()) << p_objTest.test_suite_name() << '.' << p_objTest.name()
              << std::fixed << std::setprecision(1) << "   "
              << static_cast<double>(objResult.elapsed_time()) / iMilliseconds << " s" << std::endl;
}

void CResultLines::OnTestProgramEnd(const ::testing::UnitTest& p_objUnitTest) {
    std::cout << p_objUnitTest.successful_test_count() << " passed, "
              << p_objUnitTest.failed_test_count() << " failed" << std::endl;
}
