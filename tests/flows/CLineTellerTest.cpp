#include "flows/CLineTeller.h"

#include "tests/fakes/CFakeSessionEvents.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Doing = CLineTeller::Doing;
using Kind = CFailure::Kind;
using State = CLinkStatus::State;
using Texts = std::vector<std::string>;

constexpr std::int16_t Com = CInterface::SerialInterface;
constexpr std::int16_t Lan = CInterface::LanInterface;
constexpr std::int16_t Usb = CInterface::UsbInterface;

/// The line as it stands.
class CLine : public IStatusLineView {
public:
    std::string m_strLink;
    std::string m_strDoing;  ///< with its steps, where some are counted
    std::string m_strPage;
    bool m_bCanStop = false;
    int m_iShownLinks = 0;

    void ShowLink(const std::string& p_strText) override {
        m_strLink = p_strText;
        ++m_iShownLinks;
    }
    void ShowDoing(const std::string& p_strText, std::int16_t p_iStep,
                   std::int16_t p_iSteps) override {
        m_strDoing = p_strText;
        if (p_iStep != 0 || p_iSteps != 0) {
            m_strDoing += " [" + std::to_string(p_iStep) + "/" + std::to_string(p_iSteps) + "]";
        }
    }
    void ShowStop(bool p_bCanStop) override { m_bCanStop = p_bCanStop; }
    void ShowPage(const std::string& p_strText) override { m_strPage = p_strText; }
};

class CLineTellerTest : public ::testing::Test {
protected:
    void Use(std::int16_t p_iInterface) {
        m_objInterface.SetActiveInterface(p_iInterface);
        m_objTeller.ShowLink();
    }
    void Tell(std::int16_t p_iInterface, State p_iState, const std::string& p_strWhere = "",
              Kind p_iKind = Kind::None) {
        m_objTeller.OnLinkStatus({p_iInterface, p_iState, p_strWhere, CFailure{p_iKind}});
    }

    CFakeSessionEvents m_objNext;
    CInterface m_objInterface;
    CLine m_objLine;
    CLineTeller m_objTeller{m_objNext, m_objInterface, m_objLine};
};

TEST_F(CLineTellerTest, EachInterfaceIsShownClosedAtFirst) {
    Use(Com);
    EXPECT_EQ(m_objLine.m_strLink, "COM1 closed");
    Use(Lan);
    EXPECT_EQ(m_objLine.m_strLink, "LAN not connected");
    Use(Usb);
    EXPECT_EQ(m_objLine.m_strLink, "USB");
    Use(3);
    EXPECT_EQ(m_objLine.m_strLink, "");
}

TEST_F(CLineTellerTest, EachInterfaceKeepsWhatIsToldOfIt) {
    Tell(Com, State::Open, "COM1 9600,E,8,1");
    Tell(Lan, State::Open, "10.0.0.1:8000");
    Tell(Usb, State::Failed, "", Kind::UsbNotReady);
    Use(Com);
    EXPECT_EQ(m_objLine.m_strLink, "COM1 9600,E,8,1 open");
    Use(Lan);
    EXPECT_EQ(m_objLine.m_strLink, "LAN connected to 10.0.0.1:8000");
    Use(Usb);
    EXPECT_EQ(m_objLine.m_strLink, "USB: not ready");
    Tell(Usb, State::Closed);
    EXPECT_EQ(m_objLine.m_strLink, "USB") << "at once";
}

TEST_F(CLineTellerTest, OfAnInterfaceThatIsNoneNothingIsShown) {
    Use(Lan);
    const int iShown = m_objLine.m_iShownLinks;
    Tell(3, State::Open, "elsewhere");
    Tell(-1, State::Open, "elsewhere");
    EXPECT_EQ(m_objLine.m_iShownLinks, iShown);
    EXPECT_EQ(m_objNext.Lines("link").size(), 2U) << "it is handed on";
}

TEST_F(CLineTellerTest, WhyAPortDidNotOpenOutlastsThatItIsClosed) {
    Use(Com);
    Tell(Com, State::Failed, "", Kind::SerialHeld);
    const std::string strHeld = m_objLine.m_strLink;
    EXPECT_EQ(strHeld, "COM1: held by another program");
    Tell(Com, State::Failed, "", Kind::SerialNotOpen);
    EXPECT_EQ(m_objLine.m_strLink, strHeld);
    Tell(Com, State::Failed, "", Kind::SerialLost);
    EXPECT_EQ(m_objLine.m_strLink, "COM1: pulled out") << "another failure counts";
    Tell(Com, State::Closed);
    EXPECT_EQ(m_objLine.m_strLink, "COM1 closed");
    Tell(Com, State::Failed, "", Kind::SerialNotOpen);
    EXPECT_EQ(m_objLine.m_strLink, "COM1 closed") << "nothing was known better";
    Tell(Com, State::Failed, "", Kind::SerialHeld);
    Tell(Com, State::Closed, "", Kind::SerialNotOpen);
    EXPECT_EQ(m_objLine.m_strLink, "COM1 closed");
}

TEST_F(CLineTellerTest, TheLanPlaceIsThatOfAnOpenLanInUse) {
    EXPECT_EQ(m_objTeller.LanPlace(), "");
    Use(Lan);
    Tell(Lan, State::Opening, "10.0.0.1:8000");
    EXPECT_EQ(m_objTeller.LanPlace(), "");
    Tell(Lan, State::Open, "10.0.0.1:8000");
    EXPECT_EQ(m_objTeller.LanPlace(), "10.0.0.1:8000");
    Use(Com);
    EXPECT_EQ(m_objTeller.LanPlace(), "");
    Use(Lan);
    Tell(Lan, State::ClosedByPrinter, "10.0.0.1:8000");
    EXPECT_EQ(m_objTeller.LanPlace(), "");
}

TEST_F(CLineTellerTest, WhoeverWantsIsToldOfTheLanPlace) {
    int iTold = 0;
    m_objTeller.OnLanPlace([&] { ++iTold; });
    Tell(Lan, State::Opening);
    EXPECT_EQ(iTold, 1);
    m_objTeller.ShowLink();
    EXPECT_EQ(iTold, 2);
    m_objTeller.OnLanPlace(nullptr);
    EXPECT_NO_THROW(m_objTeller.ShowLink());
    EXPECT_EQ(iTold, 2);
}

TEST_F(CLineTellerTest, TheLansConnectionsAreCountedWhenTheyBegin) {
    EXPECT_EQ(m_objTeller.LanConnections(), 0);
    Tell(Lan, State::Opening);
    EXPECT_EQ(m_objTeller.LanConnections(), 1);
    Tell(Lan, State::Open);
    Tell(Usb, State::Opening);
    Tell(Com, State::Open);
    EXPECT_EQ(m_objTeller.LanConnections(), 1);
    Tell(Lan, State::Opening);
    EXPECT_EQ(m_objTeller.LanConnections(), 2);
}

TEST_F(CLineTellerTest, ConnectingCanBeStoppedAndGoesBeforeEverythingElse) {
    const Doing objDoing(m_objTeller, "READ");
    m_objTeller.OnStep(1, 3);
    EXPECT_FALSE(m_objLine.m_bCanStop);
    Tell(Lan, State::Opening);
    EXPECT_EQ(m_objLine.m_strDoing, "connecting");
    EXPECT_TRUE(m_objLine.m_bCanStop);
    Tell(Lan, State::Open);
    EXPECT_EQ(m_objLine.m_strDoing, "READ 1 of 3 [1/3]");
    EXPECT_FALSE(m_objLine.m_bCanStop);
    Tell(Usb, State::Opening);
    EXPECT_EQ(m_objLine.m_strDoing, "READ 1 of 3 [1/3]") << "that of USB is no matter";
}

TEST_F(CLineTellerTest, WhatIsDoneIsShownAtOnceWithItsStepsAndItsWaits) {
    {
        const Doing objDoing(m_objTeller, "READ");
        EXPECT_EQ(m_objLine.m_strDoing, "READ");
        m_objTeller.OnStep(2, 3);
        EXPECT_EQ(m_objLine.m_strDoing, "READ 2 of 3 [2/3]");
        m_objTeller.OnWaiting(4);
        EXPECT_EQ(m_objLine.m_strDoing, "READ 2 of 3: waiting for the answer (4 s) [2/3]");
        m_objTeller.OnWaiting(0);
        m_objTeller.OnStep(1, 1);
        EXPECT_EQ(m_objLine.m_strDoing, "READ") << "one step is not counted";
        m_objTeller.OnStep(1, 2);
        EXPECT_EQ(m_objLine.m_strDoing, "READ 1 of 2 [1/2]");
    }
    EXPECT_EQ(m_objLine.m_strDoing, "");
}

TEST_F(CLineTellerTest, WhatIsBegunInsideStandsUntilItIsOver) {
    const Doing objOuter(m_objTeller, "LAN SET");
    m_objTeller.OnStep(1, 5);
    {
        const Doing objInner(m_objTeller, "status");
        EXPECT_EQ(m_objLine.m_strDoing, "status");
        m_objTeller.OnFailure(CFailure{Kind::NoReply});
        EXPECT_EQ(objInner.Failure().m_iKind, Kind::NoReply);
    }
    EXPECT_EQ(m_objLine.m_strDoing, "LAN SET 1 of 5 [1/5]");
    EXPECT_TRUE(objOuter.Failure().IsNone());
    m_objTeller.OnCommandFailed(CFailure{Kind::LanClosed});
    EXPECT_EQ(objOuter.Failure().m_iKind, Kind::LanClosed);
}

TEST_F(CLineTellerTest, SomeFailuresAreNotWhyItFails) {
    const Doing objDoing(m_objTeller, "READ");
    m_objTeller.OnFailure(CFailure{Kind::UsbNoAnswer});
    m_objTeller.OnFailure(CFailure{Kind::SerialOverrun});
    m_objTeller.OnCommandFailed(CFailure{Kind::SerialOverrun});
    EXPECT_TRUE(objDoing.Failure().IsNone());
    m_objTeller.OnCommandFailed(CFailure{Kind::UsbNoAnswer});
    EXPECT_EQ(objDoing.Failure().m_iKind, Kind::UsbNoAnswer) << "of a command that asks for one";
}

TEST_F(CLineTellerTest, EverythingIsHandedOn) {
    m_objTeller.OnBusy(true);
    Tell(Lan, State::Open, "10.0.0.1:8000");
    m_objTeller.OnStep(1, 3);
    m_objTeller.OnWaiting(2);
    m_objTeller.OnStatus("ON LINE");
    m_objTeller.OnHeadCheck("good");
    m_objTeller.OnFailure(CFailure{Kind::UsbNoAnswer});
    m_objTeller.OnCommandFailed(CFailure{Kind::NoReply});
    EXPECT_EQ(m_objNext.m_strLines,
              (Texts{"busy", "link 1 open 10.0.0.1:8000", "step 1 of 3", "status ON LINE",
                     "head good", "failure UsbNoAnswer", "command failed NoReply"}));
    EXPECT_EQ(m_objNext.m_iWaiting, std::vector<std::int16_t>{2});
    EXPECT_EQ(m_objLine.m_strDoing, "") << "nothing is being done";
}

}  // namespace
