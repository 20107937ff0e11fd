#include "platform/qt/CSystemLineState.h"

#include "tests/platform_qt/CTestDriver.h"
#include "tests/platform_qt/CTestTerminal.h"

#include <gtest/gtest.h>

#include <sys/ioctl.h>

namespace {

class CSystemLineStateTest : public ::testing::Test {
protected:
    ~CSystemLineStateTest() override { m_objDriver.Forget(); }

    [[nodiscard]] ILineState::Reading Read() const { return m_objState.Read(m_objLine.NearEnd()); }

    CTestDriver& m_objDriver = CTestDriver::Instance();
    CTestTerminal m_objLine;
    CSystemLineState m_objState;
};

TEST_F(CSystemLineStateTest, APseudoTerminalTellsNothing) {
    EXPECT_EQ(Read().m_bClearToSend, std::nullopt);
    EXPECT_EQ(Read().m_iOverruns, std::nullopt);
}

TEST_F(CSystemLineStateTest, APortThatIsNoneTellsNothing) {
    EXPECT_EQ(m_objState.Read(-1).m_bClearToSend, std::nullopt);
    EXPECT_EQ(m_objState.Read(-1).m_iOverruns, std::nullopt);
}

TEST_F(CSystemLineStateTest, ClearToSendIsOneOfTheLines) {
    m_objDriver.m_iLines = TIOCM_CTS;
    EXPECT_EQ(Read().m_bClearToSend, true);
    m_objDriver.m_iLines = TIOCM_CTS | TIOCM_DTR | TIOCM_RTS | TIOCM_DSR;
    EXPECT_EQ(Read().m_bClearToSend, true);
    m_objDriver.m_iLines = ~TIOCM_CTS;
    EXPECT_EQ(Read().m_bClearToSend, false);
    EXPECT_EQ(Read().m_iOverruns, std::nullopt);
}

TEST_F(CSystemLineStateTest, OverrunsAreOneOfTheCounts) {
    serial_icounter_struct objCounts{};
    objCounts.overrun = 5;
    objCounts.buf_overrun = 6;
    objCounts.frame = 7;
    m_objDriver.m_objCounts = objCounts;
    EXPECT_EQ(Read().m_iOverruns, 5);
    EXPECT_EQ(Read().m_bClearToSend, std::nullopt);
}

}  // namespace
