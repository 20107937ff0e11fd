#include "link/CLptLink.h"

#include "flows/CSessionView.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeParallelLibrary.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

class CLptLinkTest : public ::testing::Test {
protected:
    bool Exchange(const std::string& p_strCommand) {
        return m_objLink.ExchangeLpt(Bytes(p_strCommand.begin(), p_strCommand.end()));
    }

    CFakeParallelLibrary m_objLibrary;
    CFakeMessageBox m_objMessageBox;
    CFakeExchangeView m_objView;
    CSessionView m_objEvents{m_objView, m_objMessageBox};
    CLptLink m_objLink{m_objLibrary, m_objEvents};
};

TEST_F(CLptLinkTest, OpensSetsTheTimeOutWritesAndCloses) {
    const std::string strCommand("{IH;\0\xFF|}", 8);
    EXPECT_TRUE(Exchange(strCommand));
    EXPECT_EQ(m_objLibrary.m_strCalls,
              (Texts{"open LPT1:", "time-out 3 5000", "write 3 " + strCommand, "close 3"}));
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CLptLinkTest, APortThatDoesNotOpenBeepsAndIsTold) {
    m_objLibrary.m_iHandle = -1;
    m_objMessageBox.Expect("'LPT1:' Open Error !!", MessageIcon::Critical, "Failure");
    EXPECT_FALSE(Exchange("{WS|}"));
    EXPECT_EQ(m_objLibrary.m_strCalls, Texts{"open LPT1:"});
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
}

TEST_F(CLptLinkTest, HandleZeroIsAHandle) {
    m_objLibrary.m_iHandle = 0;
    EXPECT_TRUE(Exchange("x"));
    EXPECT_EQ(m_objLibrary.m_strCalls.back(), "close 0");
}

class CLptLinkShortTest : public CLptLinkTest,
                          public ::testing::WithParamInterface<std::int32_t> {};

TEST_P(CLptLinkShortTest, AWriteThatIsShortIsToldAndThePortClosed) {
    m_objLibrary.m_iMostTaken = GetParam();
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    m_objMessageBox.WhileShown([this](const CFakeMessageBox::Box&) {
        EXPECT_EQ(m_objLibrary.m_strCalls.back(), "write 3 {WS|}") << "it closes after the box";
    });
    EXPECT_FALSE(Exchange("{WS|}"));
    EXPECT_EQ(m_objLibrary.m_strCalls.back(), "close 3");
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(, CLptLinkShortTest, ::testing::Values(4, 1, 0, -1));

TEST_F(CLptLinkTest, EveryCommandOpensThePortAnew) {
    EXPECT_TRUE(Exchange("a"));
    m_objLibrary.m_iMostTaken = 0;
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    EXPECT_FALSE(Exchange("b"));
    m_objLibrary.m_iMostTaken = 1;
    EXPECT_TRUE(Exchange("c"));
    EXPECT_EQ(m_objLibrary.m_strCalls.size(), 12U);
}

}  // namespace
