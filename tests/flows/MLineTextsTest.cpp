#include "flows/MDoingText.h"
#include "flows/MLinkText.h"
#include "flows/MPageText.h"
#include "link/CInterface.h"

#include <gtest/gtest.h>

#include <cerrno>

// What stands in the three places of the line at the foot of the window.

namespace {

using State = CLinkStatus::State;
using FailureKind = CFailure::Kind;
using NoteKind = CPageNote::Kind;
using Origin = CPageState::Origin;

constexpr const char* Place = "192.168.10.20:8000";

std::string Com(State p_iState, const std::string& p_strWhere = "",
                const CFailure& p_objFailure = {}) {
    return MLinkText::Of({CInterface::SerialInterface, p_iState, p_strWhere, p_objFailure}, "COM1");
}

std::string Lan(State p_iState, const CFailure& p_objFailure = {}) {
    return MLinkText::Of({CInterface::LanInterface, p_iState, Place, p_objFailure}, "COM1");
}

std::string Usb(State p_iState, const CFailure& p_objFailure = {}) {
    return MLinkText::Of({CInterface::UsbInterface, p_iState, "", p_objFailure}, "COM1");
}

CFailure Failure(FailureKind p_iKind, int p_iReason = 0) {
    CFailure objFailure{p_iKind};
    objFailure.m_iReason = p_iReason;
    objFailure.m_objSocket.m_iNumber = p_iReason;
    return objFailure;
}

TEST(MLinkTextTest, OfASerialPort) {
    EXPECT_EQ(Com(State::Closed), "COM1 closed");
    EXPECT_EQ(Com(State::Closed, "COM2 9600,E,8,1"), "COM1 closed");
    EXPECT_EQ(Com(State::Open, "COM1 9600,E,8,1"), "COM1 9600,E,8,1 open");
    EXPECT_EQ(Com(State::Failed, "", Failure(FailureKind::SerialHeld)),
              "COM1: held by another program");
    EXPECT_EQ(Com(State::Failed, "", Failure(FailureKind::SerialNotOpened, ENOENT)),
              "COM1: no such port");
    EXPECT_EQ(Com(State::Failed, "", Failure(FailureKind::SerialLost)), "COM1: pulled out");
    EXPECT_EQ(Com(State::Failed, "", Failure(FailureKind::SerialNotSent)), "COM1: not sent whole");
    EXPECT_EQ(Com(State::Failed, "", Failure(FailureKind::SerialNotOpen)), "COM1 closed");
    CFailure objOther = Failure(FailureKind::SerialNotOpened, EACCES);
    objOther.m_strDevice = "COM3";
    objOther.m_objRefusal = {"/dev/ttyUSB0", "dialout"};
    EXPECT_EQ(Com(State::Failed, "", objOther),
              "COM3: no permission for /dev/ttyUSB0 (group dialout)");
}

TEST(MLinkTextTest, OfTheLan) {
    EXPECT_EQ(Lan(State::Closed), "LAN not connected");
    EXPECT_EQ(Lan(State::Opening), "LAN connecting to 192.168.10.20:8000 \u2026");
    EXPECT_EQ(Lan(State::Open), "LAN connected to 192.168.10.20:8000");
    EXPECT_EQ(Lan(State::ClosedByPrinter), "LAN closed by the printer");
    EXPECT_EQ(Lan(State::Failed, Failure(FailureKind::LanError, ECONNREFUSED)),
              "LAN refused: 192.168.10.20:8000");
    EXPECT_EQ(Lan(State::Failed, Failure(FailureKind::LanError, EHOSTUNREACH)),
              "LAN no route: 192.168.10.20:8000");
}

TEST(MLinkTextTest, OfUsb) {
    for (const State iState : {State::Closed, State::Opening, State::Open}) {
        EXPECT_EQ(Usb(iState), "USB");
    }
    EXPECT_EQ(Usb(State::Failed, Failure(FailureKind::UsbNotReady, ENODEV)), "USB: no printer");
    EXPECT_EQ(Usb(State::Failed, Failure(FailureKind::UsbNotReady, EACCES)),
              "USB: no permission for it (group lp)");
    EXPECT_EQ(Usb(State::Failed, Failure(FailureKind::UsbNotReady, EBUSY)),
              "USB: held by another program");
}

TEST(MLinkTextTest, OfNoInterface) {
    EXPECT_EQ(MLinkText::Of({7, State::Open, "there", {}}, "COM1"), "");
}

TEST(MDoingTextTest, TellsNameStepAndWaiting) {
    EXPECT_EQ(MDoingText::Of({}), "");
    EXPECT_EQ(MDoingText::Of({"READ", 2, 3}), "READ 2 of 3");
    EXPECT_EQ(MDoingText::Of({"SET", 1, 2}), "SET 1 of 2");
    EXPECT_EQ(MDoingText::Of({"LAN SET", 3, 5}), "LAN SET 3 of 5");
    EXPECT_EQ(MDoingText::Of({"LAN READ", 1, 1}), "LAN READ");
    EXPECT_EQ(MDoingText::Of({"head check"}), "head check");
    EXPECT_EQ(MDoingText::Of({"READ", 2, 3, 3}), "READ 2 of 3: waiting for the answer (3 s)");
    EXPECT_EQ(MDoingText::Of({"READ", 0, 0, 1}), "READ: waiting for the answer (1 s)");
    EXPECT_EQ(MDoingText::Of({"", 0, 0, 3}), "waiting for the answer (3 s)");
    EXPECT_EQ(MDoingText::Of({"LAN SET", 3, 5, 1, true}), "connecting");
}

struct PageCase {
    const char* m_strName;
    CPageState m_objState;
    const char* m_strText;
};

void PrintTo(const PageCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

CPageState Ended(const CPageNote& p_objNote) {
    return {Origin::Defaults, "", 0, false, p_objNote};
}

const PageCase Pages[] = {
    {"Defaults", {Origin::Defaults}, "defaults, never read"},
    {"DefaultsChanged", {Origin::Defaults, "", 3}, "3 fields changed, never read"},
    {"Read", {Origin::Read}, "as read from the printer"},
    {"ReadThreeChanged", {Origin::Read, "", 3}, "3 fields changed since read"},
    {"ReadOneChanged", {Origin::Read, "", 1}, "1 field changed since read"},
    {"Sent", {Origin::Sent, "", 4, false}, "sent, not read back"},
    {"SentThenChanged", {Origin::Sent, "", 4, true}, "sent, then changed"},
    {"File", {Origin::File, "/home/anna/shop.dt1", 9, false}, "from file shop.dt1"},
    {"FileThenChanged", {Origin::File, "shop.dt1", 9, true}, "from file shop.dt1, then changed"},
    {"ReadIsNoNews", Ended({NoteKind::Read}), "defaults, never read"},
    {"SentIsNoNews", Ended({NoteKind::Sent}), "defaults, never read"},
    {"LoadedIsNoNews", Ended({NoteKind::Loaded, {}, "shop.dt1"}), "defaults, never read"},
    {"ReadEnded", Ended({NoteKind::ReadEnded, {1}, "", {FailureKind::NoReply}}),
     "READ ended at group 1: no answer (defaults, never read)"},
    {"ReadEndedWithoutCause", Ended({NoteKind::ReadEnded, {4}}),
     "READ ended at group 4 (defaults, never read)"},
    {"Unanswered", Ended({NoteKind::Unanswered, {0, 1, 4}}),
     "READ: no answer for groups 0, 1 and 4 (defaults, never read)"},
    {"TwoUnanswered", Ended({NoteKind::Unanswered, {0, 4}}),
     "READ: no answer for groups 0 and 4 (defaults, never read)"},
    {"OneUnanswered", Ended({NoteKind::Unanswered, {4}}),
     "READ: no answer for group 4 (defaults, never read)"},
    {"Unshown", Ended({NoteKind::Unshown, {}, "SPEED has no entry for 9"}),
     "READ ended: SPEED has no entry for 9 (defaults, never read)"},
    {"UnshownWithoutWords", Ended({NoteKind::Unshown}),
     "READ ended: the page cannot show what came (defaults, never read)"},
    {"SetEnded", Ended({NoteKind::SetEnded, {2, 5}, "", {FailureKind::UsbStrayAnswer}}),
     "SET ended at 2 of 5: settings came in place of its answer (defaults, never read)"},
    {"Unsendable", Ended({NoteKind::Unsendable}),
     "SET has sent nothing: a text is longer than the printer takes (defaults, never read)"},
    {"LoadEnded", Ended({NoteKind::LoadEnded, {}, "/home/anna/shop.dt1"}),
     "LOAD ended in file shop.dt1 (defaults, never read)"},
};

class MPageTextTest : public ::testing::TestWithParam<PageCase> {};

TEST_P(MPageTextTest, HasItsWords) {
    EXPECT_EQ(MPageText::Of(GetParam().m_objState), GetParam().m_strText);
}

INSTANTIATE_TEST_SUITE_P(, MPageTextTest, ::testing::ValuesIn(Pages),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(MPageTextMoveTest, TellsFromWhereToWhere) {
    const MPageText::Place objHere{"192.168.10.20", "8000"};
    EXPECT_EQ(MPageText::Move(objHere, objHere), "");
    EXPECT_EQ(
        MPageText::Move(objHere, {"192.168.10.77", "8000"}),
        "SET will move the printer from 192.168.10.20 to 192.168.10.77: this connection ends");
    EXPECT_EQ(MPageText::Move(objHere, {"192.168.10.20", "9100"}),
              "SET will move the printer from port 8000 to port 9100: this connection ends");
    EXPECT_EQ(MPageText::Move(objHere, {"192.168.10.77", "9100"}),
              "SET will move the printer from 192.168.10.20:8000 to 192.168.10.77:9100: this "
              "connection ends");
    EXPECT_EQ(MPageText::Move(objHere, {"192.168.10.20", "8000", false}),
              "SET will switch the printer's socket off: this connection ends");
}

TEST(MPageTextMoveTest, StandsBeforeWhatThePageHolds) {
    EXPECT_EQ(MPageText::Of({Origin::Read}, "SET will move it"),
              "SET will move it (as read from the printer)");
    EXPECT_EQ(MPageText::Of({Origin::Read}, ""), "as read from the printer");
}

TEST(MPageTextFailedTest, TellsWhatHasEndedAndWhy) {
    EXPECT_EQ(MPageText::Failed("RAM clear", {FailureKind::NoReply}), "RAM clear ended: no answer");
    EXPECT_EQ(MPageText::Failed("RAM clear", {}), "");
}

}  // namespace
