#include "tests/kernel/CResultLines.h"

#include <gtest/gtest.h>

#include <memory>

// No test at all counts as a failure: nothing has been shown then.
int main(int p_iCount, char** p_strArguments) {
    ::testing::InitGoogleTest(&p_iCount, p_strArguments);
    ::testing::TestEventListeners& objListeners = ::testing::UnitTest::GetInstance()->listeners();
    delete objListeners.Release(objListeners.default_result_printer());
    objListeners.Append(std::make_unique<CResultLines>().release());  // owned by the list
    const int iResult = RUN_ALL_TESTS();
    return ::testing::UnitTest::GetInstance()->test_to_run_count() > 0 ? iResult : 1;
}
