#include "platform/qt/CFloodGate.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

class CFloodGateTest : public ::testing::Test {
protected:
    CFloodGate m_objGate{{100, 3}};
    CFloodGate::Time m_objNow = CFloodGate::Time() + std::chrono::hours(1);
};

TEST_F(CFloodGateTest, IsOpenUntilTheSlotHasHadItsBytes) {
    EXPECT_FALSE(m_objGate.IsShut());
    m_objGate.Arrive(m_objNow);
    m_objGate.Take(99);
    EXPECT_FALSE(m_objGate.IsShut());
    m_objGate.Take(1);
    EXPECT_TRUE(m_objGate.IsShut());
}

TEST_F(CFloodGateTest, IsOpenUntilTheSlotHasHadItsArrivals) {
    m_objGate.Arrive(m_objNow);
    m_objGate.Arrive(m_objNow);
    EXPECT_FALSE(m_objGate.IsShut());
    m_objGate.Arrive(m_objNow + CFloodGate::Slot - microseconds(1));
    EXPECT_TRUE(m_objGate.IsShut());
}

TEST_F(CFloodGateTest, ANewSlotHasAShareOfItsOwn) {
    m_objGate.Arrive(m_objNow);
    m_objGate.Take(1000);
    m_objNow += CFloodGate::Slot;
    m_objGate.Arrive(m_objNow);
    EXPECT_FALSE(m_objGate.IsShut());
    m_objGate.Take(99);
    EXPECT_FALSE(m_objGate.IsShut());
}

TEST_F(CFloodGateTest, StaysShutUntilTheSlotIsOver) {
    m_objGate.Arrive(m_objNow);
    m_objGate.Take(100);
    EXPECT_EQ(m_objGate.Left(m_objNow), CFloodGate::Slot);
    EXPECT_EQ(m_objGate.Left(m_objNow + microseconds(2500)), milliseconds(2));
    EXPECT_EQ(m_objGate.Left(m_objNow + CFloodGate::Slot), milliseconds(1));
    EXPECT_EQ(m_objGate.Left(m_objNow + std::chrono::hours(1)), milliseconds(1));
}

}  // namespace
