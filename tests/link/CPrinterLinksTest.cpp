#include "link/CPrinterLinks.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

class CCountingLink : public ILink {
public:
    bool m_bOpens = true;
    bool m_bCloses = true;
    int m_iStops = 0;
    int m_iOpens = 0;
    int m_iCloses = 0;

    [[nodiscard]] Answering HowItAnswers() const override { return Answering::Later; }

    bool Open() override {
        ++m_iOpens;
        return m_bOpens;
    }

    bool Close() override {
        ++m_iCloses;
        return m_bCloses;
    }

    void StopOpening() override { ++m_iStops; }

    bool Exchange(const Bytes& /*p_objCommand*/, Bytes& /*p_objReceiveBuffer*/,
                  CFailure& /*p_objFailure*/, std::int16_t& /*p_iReceivedCount*/,
                  std::int16_t /*p_iReceiveLength*/) override {
        return false;
    }
};

class CPrinterLinksTest : public ::testing::TestWithParam<std::int16_t> {
protected:
    CCountingLink m_objLink;
    CPrinterLinks m_objLinks;
};

TEST_P(CPrinterLinksTest, OpensAndClosesTheLinkOfItsInterfaceOnly) {
    m_objLinks.SetLink(GetParam(), m_objLink);
    for (std::int16_t iInterface = -1; iInterface <= 3; ++iInterface) {
        SCOPED_TRACE(iInterface);
        const bool bIts = iInterface == GetParam();
        EXPECT_EQ(m_objLinks.OpenLink(iInterface), bIts);
        EXPECT_TRUE(m_objLinks.CloseLink(iInterface));
        EXPECT_EQ(m_objLinks.Find(iInterface), bIts ? &m_objLink : nullptr);
    }
    EXPECT_EQ(m_objLink.m_iOpens, 1);
    EXPECT_EQ(m_objLink.m_iCloses, 1);
}

TEST_P(CPrinterLinksTest, TellsWhenALinkDoesNotOpen) {
    m_objLink.m_bOpens = false;
    m_objLinks.SetLink(GetParam(), m_objLink);
    EXPECT_FALSE(m_objLinks.OpenLink(GetParam()));
    EXPECT_EQ(m_objLink.m_iOpens, 1);
}

TEST_P(CPrinterLinksTest, TellsWhenALinkDoesNotClose) {
    m_objLink.m_bCloses = false;
    m_objLinks.SetLink(GetParam(), m_objLink);
    EXPECT_FALSE(m_objLinks.CloseLink(GetParam()));
}

TEST_P(CPrinterLinksTest, StopsTheLinksThatThereAre) {
    m_objLinks.SetLink(GetParam(), m_objLink);
    m_objLinks.StopOpening();
    EXPECT_EQ(m_objLink.m_iStops, 1);
}

// What a link tells that holds no connection between two commands.
TEST_P(CPrinterLinksTest, ALinkHasNoConnectionUnlessItSaysSo) {
    EXPECT_EQ(m_objLink.Connection(), 0);
    EXPECT_TRUE(m_objLink.WithoutConnection().IsNone());
    EXPECT_TRUE(m_objLink.Lost().IsNone());
}

INSTANTIATE_TEST_SUITE_P(, CPrinterLinksTest,
                         ::testing::Values(CInterface::SerialInterface, CInterface::LanInterface,
                                           CInterface::UsbInterface));

class CMissingLinkTest : public ::testing::TestWithParam<std::int16_t> {};

TEST_P(CMissingLinkTest, NeverOpensAndAlwaysCloses) {
    CPrinterLinks objLinks;
    EXPECT_FALSE(objLinks.OpenLink(GetParam()));
    EXPECT_TRUE(objLinks.CloseLink(GetParam()));
    EXPECT_EQ(objLinks.Find(GetParam()), nullptr);
}

INSTANTIATE_TEST_SUITE_P(, CMissingLinkTest, ::testing::Values(-32768, -1, 0, 1, 2, 3, 7, 32767));

TEST(CPrinterLinksRegistrationTest, RefusesAnInterfaceThatDoesNotExist) {
    CPrinterLinks objLinks;
    CCountingLink objLink;
    EXPECT_THROW(objLinks.SetLink(3, objLink), std::out_of_range);
    EXPECT_THROW(objLinks.SetLink(-1, objLink), std::out_of_range);
}

}  // namespace
