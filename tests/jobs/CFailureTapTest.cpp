#include "jobs/CFailureTap.h"

#include "tests/fakes/CFakeSessionEvents.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Kind = CFailure::Kind;
using Texts = std::vector<std::string>;

TEST(CFailureTapTest, EverythingIsHandedOn) {
    CFakeSessionEvents objEvents;
    CFailureTap objTap(objEvents);
    objTap.OnBusy(true);
    objTap.OnLinkStatus({1, CLinkStatus::State::Open, "10.0.0.1:8000", {}});
    objTap.OnStep(1, 3);
    objTap.OnWaiting(2);
    objTap.OnStatus("ON LINE");
    objTap.OnHeadCheck("good");
    objTap.OnFailure(CFailure{Kind::UsbNoAnswer});
    objTap.OnCommandFailed(CFailure{Kind::NoReply});
    EXPECT_EQ(objEvents.m_strLines,
              (Texts{"busy", "link 1 open 10.0.0.1:8000", "step 1 of 3", "status ON LINE",
                     "head good", "failure UsbNoAnswer", "command failed NoReply"}));
    EXPECT_EQ(objEvents.m_iWaiting, std::vector<std::int16_t>{2});
}

TEST(CFailureTapTest, TheLastFailureIsKept) {
    CFakeSessionEvents objEvents;
    CFailureTap objTap(objEvents);
    EXPECT_TRUE(objTap.Last().IsNone());
    objTap.OnFailure(CFailure{Kind::LanError});
    objTap.OnFailure(CFailure{Kind::LanClosed});
    objTap.OnCommandFailed(CFailure{Kind::NoReply});
    EXPECT_EQ(objTap.Last().m_iKind, Kind::LanClosed);
}

}  // namespace
