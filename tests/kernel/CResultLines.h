#pragma once

#include <gtest/gtest.h>

/// Prints one line a case, what was wrong in front of it, and the counts at the end:
/// "21 passed, 0 failed".
class CResultLines : public ::testing::EmptyTestEventListener {
public:
    void OnTestPartResult(const ::testing::TestPartResult& p_objResult) override;
    void OnTestEnd(const ::testing::TestInfo& p_objTest) override;
    void OnTestProgramEnd(const ::testing::UnitTest& p_objUnitTest) override;
};
