#include "jobs/CWritePlan.h"

#include <gtest/gtest.h>

namespace {

using Command = CWritePlan::Command;

TEST(CWritePlanTest, TheTextOfAStepIsItsCommand) {
    const CSnapshot objDefaults;
    EXPECT_EQ(CWritePlan::Text(Command::IpAddress, objDefaults), "{IP;2,192,168,010,020|}");
    EXPECT_EQ(CWritePlan::Text(Command::SocketPort, objDefaults), "{IS;1,08000|}");
    EXPECT_EQ(CWritePlan::Text(Command::None, objDefaults), "");
}

TEST(CWritePlanTest, WhatIsNotAsWideAsItHasToBeIsNoCommand) {
    CSnapshot objWide;
    objWide.Items().m_objFeedAdjustment->SetValue(1234);
    EXPECT_EQ(CWritePlan::Text(Command::IpAddress, objWide), "") << "whichever it is";
    CSnapshot objLong;
    objLong.Items().m_objDhcpClientHost->SetValue(std::string(17, 'x'));
    EXPECT_EQ(CWritePlan::Text(Command::IpAddress, objLong), "");
}

TEST(CWritePlanTest, AFieldThatLooksLikeAFrameMakesNoCommand) {
    for (const char* const strHost : {"{", "|", "}", "|}", "a{b", "a|}{IS;0,00000|}"}) {
        CSnapshot objSnapshot;
        objSnapshot.Items().m_objDhcpClientHost->SetValue(std::string(strHost).substr(0, 16));
        EXPECT_EQ(CWritePlan::Text(Command::Dhcp, objSnapshot), "") << strHost;
        EXPECT_NE(CWritePlan::Text(Command::IpAddress, objSnapshot), "") << strHost;
    }
}

TEST(CWritePlanTest, ThePlacesAreThoseOfTheStepsAndEveryMixtureOfThem) {
    CWritePlan objPlan;
    const auto Told = [&](std::size_t p_iDone) {
        std::string strText;
        for (const CPrinterPlace& objPlace : objPlan.Places(p_iDone)) {
            strText += objPlace.m_strHost + ":" +
                       (objPlace.m_iPort ? std::to_string(*objPlace.m_iPort) : "") +
                       objPlace.m_strLine + " ";
        }
        return strText;
    };
    EXPECT_EQ(Told(0), ": ");
    EXPECT_EQ(Told(3), ": ") << "there are no more steps";
    objPlan.m_objSteps.push_back({Command::SocketPort, true, {"", 9100, ""}});
    objPlan.m_objSteps.push_back({Command::IpAddress, true, {"10.1.2.3", 9100, ""}});
    EXPECT_EQ(Told(0), ": ");
    EXPECT_EQ(Told(1), ":9100 : ");
    EXPECT_EQ(Told(2), "10.1.2.3:9100 :9100 : 10.1.2.3: ");
    objPlan.m_objHome = {"10.9.9.9", {}, ""};
    EXPECT_EQ(Told(0), ": 10.9.9.9: ");
}

}  // namespace
