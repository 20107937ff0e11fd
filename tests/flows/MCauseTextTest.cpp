#include "flows/MCauseText.h"
#include "tests/fakes/CFakeSessionEvents.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ostream>
#include <string>
#include <vector>

namespace {

using Kind = CFailure::Kind;

struct CauseCase {
    Kind m_iKind;
    std::string m_strText;
};

void PrintTo(const CauseCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << CFakeSessionEvents::Name(p_objCase.m_iKind);
}

/// Each kind, of which the system has told nothing.
const std::vector<CauseCase> Causes{
    {Kind::None, ""},
    {Kind::SerialHeld, "held by another program"},
    {Kind::SerialNotOpened, "does not open"},
    {Kind::SerialNotOpen, "the port is closed"},
    {Kind::SerialNotSent, "not sent whole"},
    {Kind::SerialLost, "pulled out"},
    {Kind::SerialOverrun, "characters were lost"},
    {Kind::LanError, "failed"},
    {Kind::LanNotConnected, "not connected"},
    {Kind::LanNotSent, "not sent"},
    {Kind::LanClosed, "closed by the printer"},
    {Kind::UsbNotOpened, "not ready"},
    {Kind::UsbNotReady, "not ready"},
    {Kind::UsbNoDeviceId, "the printer does not tell what it is"},
    {Kind::UsbMismatch, "another maker's printer"},
    {Kind::UsbNotSent, "the printer does not take the command"},
    {Kind::UsbNoAnswer, "no answer"},
    {Kind::UsbStrayAnswer, "settings came in place of its answer"},
    {Kind::NoReply, "no answer"},
    {Kind::NoLink, "there is no such link"},
    {Kind::TimeUp, "it takes too long"},
    {Kind::ParallelNotOpened, "the parallel port does not open"},
    {Kind::ParallelNotSent, "the parallel port does not take the command"},
};

class MCauseTextTest : public ::testing::TestWithParam<CauseCase> {};

TEST_P(MCauseTextTest, HasItsWords) {
    EXPECT_EQ(MCauseText::Of({GetParam().m_iKind}), GetParam().m_strText);
}

INSTANTIATE_TEST_SUITE_P(, MCauseTextTest, ::testing::ValuesIn(Causes), [](const auto& p_objInfo) {
    return CFakeSessionEvents::Name(p_objInfo.param.m_iKind);
});

TEST(MCauseTextTableTest, NoKindIsLeftOut) {
    ASSERT_EQ(Causes.size(), static_cast<std::size_t>(Kind::ParallelNotSent) + 1);
    for (std::size_t i = 0; i < Causes.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(Causes[i].m_iKind), i);
    }
}

CFailure Serial(int p_iReason, const DeviceRefusal& p_objRefusal = {}) {
    CFailure objFailure{Kind::SerialNotOpened};
    objFailure.m_iReason = p_iReason;
    objFailure.m_objRefusal = p_objRefusal;
    return objFailure;
}

TEST(MCauseTextNumberTest, ASerialPortTellsWhyItDoesNotOpen) {
    EXPECT_EQ(MCauseText::Of(Serial(ENOENT)), "no such port");
    EXPECT_EQ(MCauseText::Of(Serial(ENODEV)), "no such port");
    EXPECT_EQ(MCauseText::Of(Serial(ENXIO)), "no such port");
    EXPECT_EQ(MCauseText::Of(Serial(ENOTTY)), "no serial port");
    EXPECT_EQ(MCauseText::Of(Serial(EISDIR)), "no serial port");
    EXPECT_EQ(MCauseText::Of(Serial(EBUSY)), "held by another program");
    EXPECT_EQ(MCauseText::Of(Serial(EIO)), "the device does not react");
    EXPECT_EQ(MCauseText::Of(Serial(1)), "does not open");
}

TEST(MCauseTextNumberTest, WhoMayUseASerialPortIsTold) {
    EXPECT_EQ(MCauseText::Of(Serial(EACCES, {"/dev/ttyUSB0", "dialout"})),
              "no permission for /dev/ttyUSB0 (group dialout)");
    EXPECT_EQ(MCauseText::Of(Serial(EACCES, {"/dev/ttyUSB0", "uucp", true})),
              "no permission for /dev/ttyUSB0 (group uucp: log in again)");
    EXPECT_EQ(MCauseText::Of(Serial(EACCES, {"/dev/ttyUSB0", ""})),
              "no permission for /dev/ttyUSB0");
    EXPECT_EQ(MCauseText::Of(Serial(EACCES)), "no permission");
}

TEST(MCauseTextNumberTest, TheNetworkTellsItsCauseOrHasItsOwnWords) {
    const auto Of = [](int p_iNumber, const std::string& p_strDescription = "") {
        CFailure objFailure{Kind::LanError};
        objFailure.m_objSocket = {p_iNumber, p_strDescription, 0, "", "", 0, false};
        return MCauseText::Of(objFailure);
    };
    EXPECT_EQ(Of(ECONNREFUSED, "Connection refused"), "refused");
    EXPECT_EQ(Of(ETIMEDOUT), "timed out");
    EXPECT_EQ(Of(EHOSTUNREACH), "no route");
    EXPECT_EQ(Of(EHOSTDOWN), "no route");
    EXPECT_EQ(Of(ENETUNREACH), "network unreachable");
    EXPECT_EQ(Of(ENETDOWN), "network down");
    EXPECT_EQ(Of(EADDRNOTAVAIL), "no such address");
    EXPECT_EQ(Of(ECONNRESET), "connection broken");
    EXPECT_EQ(Of(ECONNABORTED), "connection broken");
    EXPECT_EQ(Of(EPIPE), "connection broken");
    EXPECT_EQ(Of(EACCES), "forbidden by this computer");
    EXPECT_EQ(Of(EMFILE), "too many files open");
    EXPECT_EQ(Of(SocketError::NoSuchHost), "no such name");
    EXPECT_EQ(Of(SocketError::NotResolved), "nobody to ask for the name");
    EXPECT_EQ(Of(0, "\x7F\x80\xBF\xC0\xFF"), "\x7F\xC2\x80\xC2\xBF\xC3\x80\xC3\xBF");
    EXPECT_EQ(Of(0, "The proxy type is invalid"), "The proxy type is invalid");
    EXPECT_EQ(Of(0, "Zeit\xFC"
                    "berschreitung"),
              "Zeit\xC3\xBC"
              "berschreitung");
}

TEST(MCauseTextNumberTest, UsbTellsWhyThePrinterIsNotReady) {
    for (const Kind iKind : {Kind::UsbNotReady, Kind::UsbNotOpened}) {
        const auto Of = [iKind](int p_iReason) {
            CFailure objFailure{iKind};
            objFailure.m_iReason = p_iReason;
            return MCauseText::Of(objFailure);
        };
        EXPECT_EQ(Of(ENODEV), "no printer");
        EXPECT_EQ(Of(EACCES), "no permission for it (group lp)");
        EXPECT_EQ(Of(EPERM), "no permission for it (group lp)");
        EXPECT_EQ(Of(EBUSY), "held by another program");
        EXPECT_EQ(Of(0), "not ready");
    }
}

TEST(MCauseTextUnknownTest, AKindThatNobodyKnowsHasNoWords) {
    EXPECT_EQ(MCauseText::Of(CFailure{static_cast<Kind>(99)}), "");
}

}  // namespace
