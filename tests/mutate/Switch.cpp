#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

// Which change is on (VARDEN_MUTANT), and, where VARDEN_MUTANT_REACHED names a file, which ones
// each test comes to: a line a test with its milliseconds, one of "-" for what comes before the
// first.

namespace {

struct CSwitch {
    CSwitch() {
        const char* const strNumber = std::getenv("VARDEN_MUTANT");
        m_iOn = strNumber != nullptr ? std::atoi(strNumber) : -1;
        const char* const strPath = std::getenv("VARDEN_MUTANT_REACHED");
        m_objFile = strPath != nullptr ? std::fopen(strPath, "w") : nullptr;
    }
    void Tell(const std::string& p_strName, long long p_iMilliseconds) {
        std::fprintf(m_objFile, "%s\t%lld\t", p_strName.c_str(), p_iMilliseconds);
        for (const std::size_t iNumber : m_iReached) {
            std::fprintf(m_objFile, "%zu ", iNumber);
            m_bReached[iNumber] = false;
        }
        m_iReached.clear();
        std::fputc('\n', m_objFile);
        std::fflush(m_objFile);
    }

    int m_iOn = -1;
    std::FILE* m_objFile = nullptr;
    std::vector<bool> m_bReached;
    std::vector<std::size_t> m_iReached;
};

CSwitch& Switch() {
    static CSwitch objSwitch;
    return objSwitch;
}

class CListener : public testing::EmptyTestEventListener {
    std::clock_t m_iBegun = 0;

    void OnTestStart(const testing::TestInfo& /*p_objTest*/) override { m_iBegun = std::clock(); }
    void OnTestProgramStart(const testing::UnitTest& /*p_objUnit*/) override {
        Switch().Tell("-", 0);
    }
    void OnTestEnd(const testing::TestInfo& p_objTest) override {
        Switch().Tell(std::string(p_objTest.test_suite_name()) + "." + p_objTest.name(),
                      (std::clock() - m_iBegun) * 1000LL / CLOCKS_PER_SEC);
    }
};

[[maybe_unused]] const bool Listens = [] {
    if (Switch().m_objFile != nullptr) {
        testing::UnitTest::GetInstance()->listeners().Append(new CListener);
    }
    return true;
}();

}  // namespace

namespace MMutation {

bool On(int p_iNumber) noexcept;

bool On(int p_iNumber) noexcept {
    CSwitch& objSwitch = Switch();
    if (objSwitch.m_objFile != nullptr) {
        const auto iNumber = static_cast<std::size_t>(p_iNumber);
        if (objSwitch.m_bReached.size() <= iNumber) {
            objSwitch.m_bReached.resize(iNumber + 1);
        }
        if (!objSwitch.m_bReached[iNumber]) {
            objSwitch.m_bReached[iNumber] = true;
            objSwitch.m_iReached.push_back(iNumber);
        }
    }
    return objSwitch.m_iOn == p_iNumber;
}

}  // namespace MMutation
