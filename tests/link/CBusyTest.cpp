#include "link/CBusy.h"

#include "flows/CSessionView.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <vector>

namespace {

using Told = std::vector<bool>;

class CBusyTest : public ::testing::Test {
protected:
    CFakeExchangeView m_objView;
    CFakeMessageBox m_objMessageBox;
    CSessionView m_objEvents{m_objView, m_objMessageBox};
    CBusy m_objBusy{m_objEvents};
};

TEST_F(CBusyTest, IsNotBusyAndTellsNothingAtFirst) {
    EXPECT_FALSE(m_objBusy.IsBusy());
    EXPECT_EQ(m_objView.m_bEnabled, Told{});
}

TEST_F(CBusyTest, BeginDisablesAndEndEnables) {
    m_objBusy.BeginBusy();
    EXPECT_TRUE(m_objBusy.IsBusy());
    EXPECT_EQ(m_objView.m_bEnabled, Told{false});
    m_objBusy.EndBusy();
    EXPECT_FALSE(m_objBusy.IsBusy());
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

TEST_F(CBusyTest, EndWithoutBeginEnables) {
    m_objBusy.EndBusy();
    EXPECT_FALSE(m_objBusy.IsBusy());
    EXPECT_EQ(m_objView.m_bEnabled, Told{true});
}

TEST_F(CBusyTest, EndInsideAFlowEnablesNothing) {
    {
        const CBusy::Flow objFlow(m_objBusy);
        m_objBusy.EndBusy();
        m_objBusy.BeginBusy();
        m_objBusy.EndBusy();
        EXPECT_TRUE(m_objBusy.IsBusy());
        EXPECT_EQ(m_objView.m_bEnabled, (Told{false, false}));
    }
    EXPECT_FALSE(m_objBusy.IsBusy());
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, false, true}));
}

TEST_F(CBusyTest, OnlyTheOutermostFlowEnables) {
    std::optional<CBusy::Flow> objOuter(std::in_place, m_objBusy);
    { const CBusy::Flow objInner(m_objBusy); }
    EXPECT_TRUE(m_objBusy.IsBusy());
    EXPECT_FALSE(m_objView.AreControlsEnabled());
    objOuter.reset();
    EXPECT_FALSE(m_objBusy.IsBusy());
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CBusyTest, AFlowThatFailsEnables) {
    EXPECT_THROW(
        {
            const CBusy::Flow objFlow(m_objBusy);
            throw std::runtime_error("failed");
        },
        std::runtime_error);
    EXPECT_FALSE(m_objBusy.IsBusy());
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

}  // namespace
