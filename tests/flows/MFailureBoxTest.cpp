#include "flows/MFailureBox.h"

#include "flows/CSessionView.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeSessionEvents.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using Kind = CFailure::Kind;
using Box = CFakeMessageBox::Box;

constexpr const char* Tool = "Varden Setting Tool";

/// What a person hears and sees of a failure: the moment it happens, and from the handler.
struct FailureCase {
    Kind m_iKind;
    bool m_bBeep;
    std::optional<Box> m_objAtOnce;
    std::optional<Box> m_objByHandler;
};

void PrintTo(const FailureCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << CFakeSessionEvents::Name(p_objCase.m_iKind);
}

Box Exclamation(const char* p_strText) {
    return {p_strText, MessageIcon::Exclamation, Tool};
}

Box Critical(const char* p_strText, const char* p_strTitle = Tool) {
    return {p_strText, MessageIcon::Critical, p_strTitle};
}

const std::vector<FailureCase> Cases{
    {Kind::None, false, {}, {}},
    {Kind::SerialHeld, false, Exclamation("Already Opened Port by other Application"), {}},
    {Kind::SerialNotOpened, false, {}, {}},
    {Kind::SerialNotOpen, false, {}, {}},
    {Kind::SerialNotSent, false, {}, {}},
    {Kind::SerialLost, false, {}, {}},
    {Kind::SerialOverrun, false, Exclamation("HARD ERROR"), {}},
    {Kind::LanError,
     false,
     Box{"Number=111  Connection refused\r\nScode=5\r\nSource=socket\r\nHelpFile=help\r\n"
         "HelpContext=7\r\nCancelDisplay=True",
         MessageIcon::None, Tool},
     {}},
    {Kind::LanNotConnected, false, Critical("'LAN' Open Error !!"), {}},
    {Kind::LanNotSent, false, {}, Exclamation("'LAN' Send Error !!")},
    {Kind::LanClosed, false, {}, {}},
    {Kind::UsbNotOpened, false, Critical("'USB' Open Error !!"), {}},
    {Kind::UsbNotReady, false, {}, Exclamation("USB Device not ready !!")},
    {Kind::UsbNoDeviceId, false, {}, Exclamation("USB DeviceID receive error")},
    {Kind::UsbMismatch, false, {}, Exclamation("USB DeviceID mismatch error")},
    {Kind::UsbNotSent, false, Critical("Device Time Out !!"), {}},
    {Kind::UsbNoAnswer, true, {}, Exclamation("Please confirm the connection of USB.")},
    {Kind::UsbStrayAnswer, false, {}, {}},
    {Kind::NoReply, true, Critical("Device Time Out !!", "Failure"), {}},
    {Kind::NoLink, false, {}, {}},
    {Kind::TimeUp, false, {}, {}},
    {Kind::ParallelNotOpened, true, Critical("'LPT1:' Open Error !!", "Failure"), {}},
    {Kind::ParallelNotSent, false, Critical("Device Time Out !!", "Failure"), {}},
};

class MFailureBoxTest : public ::testing::TestWithParam<FailureCase> {
protected:
    static CFailure Failure() {
        CFailure objFailure{GetParam().m_iKind};
        objFailure.m_objSocket = {111, "Connection refused", 5, "socket", "help", 7, true};
        return objFailure;
    }

    void Expect(const std::optional<Box>& p_objBox) {
        if (p_objBox) {
            m_objBoxes.Expect(p_objBox->m_strText, p_objBox->m_iIcon, p_objBox->m_strTitle);
        }
    }

    CFakeMessageBox m_objBoxes;
    CFakeExchangeView m_objView;
    CSessionView m_objEvents{m_objView, m_objBoxes};
};

TEST_P(MFailureBoxTest, IsToldTheMomentItHappensAsItsRowSays) {
    Expect(GetParam().m_objAtOnce);
    m_objEvents.OnFailure(Failure());
    EXPECT_EQ(m_objBoxes.BeepCount(), GetParam().m_bBeep ? 1 : 0);
}

TEST_P(MFailureBoxTest, IsToldByTheHandlerAsItsRowSays) {
    Expect(GetParam().m_objByHandler);
    m_objEvents.OnCommandFailed(Failure());
    EXPECT_EQ(m_objBoxes.BeepCount(), 0);
    EXPECT_EQ(MFailureBox::HandlerText(Failure()),
              GetParam().m_objByHandler ? GetParam().m_objByHandler->m_strText : "");
}

TEST_P(MFailureBoxTest, AnswersAndButtonsAreNotItsMatter) {
    Expect(GetParam().m_objAtOnce);
    Expect(GetParam().m_objByHandler);
    m_objEvents.OnFailure(Failure());
    m_objEvents.OnCommandFailed(Failure());
    m_objEvents.OnLinkStatus({1, CLinkStatus::State::Failed, "there", Failure()});
    m_objEvents.OnStep(1, 2);
    EXPECT_TRUE(m_objView.m_bEnabled.empty());
    EXPECT_TRUE(m_objView.m_strStatuses.empty());
    EXPECT_TRUE(m_objView.m_strHeadChecks.empty());
}

INSTANTIATE_TEST_SUITE_P(, MFailureBoxTest, ::testing::ValuesIn(Cases), [](const auto& p_objInfo) {
    return CFakeSessionEvents::Name(p_objInfo.param.m_iKind);
});

TEST(MFailureBoxTableTest, NoKindIsLeftOut) {
    ASSERT_EQ(Cases.size(), static_cast<std::size_t>(Kind::ParallelNotSent) + 1);
    for (std::size_t i = 0; i < Cases.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(Cases[i].m_iKind), i);
    }
}

TEST(MFailureBoxUnknownTest, AKindThatNobodyKnowsIsToldNowhere) {
    CFakeMessageBox objBoxes;  // none is expected
    const CFailure objFailure{static_cast<Kind>(99)};
    MFailureBox::ShowAtOnce(objFailure, objBoxes);
    MFailureBox::ShowByHandler(objFailure, objBoxes);
    EXPECT_EQ(MFailureBox::HandlerText(objFailure), "");
    EXPECT_EQ(objBoxes.BeepCount(), 0);
}

}  // namespace
