#include "flows/MCauseText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// The page that tells what to do has every cause that the line can say of a link.

namespace {

using Kind = CFailure::Kind;

struct Told {
    Kind m_iKind;
    std::vector<int> m_iReasons;
};

/// What a link can be said to have failed with, and the numbers that have words of their own.
const std::vector<Told> States{
    {Kind::SerialHeld, {0}},
    {Kind::SerialNotOpened, {0, ENOENT, ENOTTY, EIO, EACCES}},
    {Kind::SerialNotSent, {0}},
    {Kind::SerialLost, {0}},
    {Kind::LanError,
     {ECONNREFUSED, ETIMEDOUT, EHOSTUNREACH, ENETUNREACH, ENETDOWN, EADDRNOTAVAIL, ECONNRESET,
      EACCES}},
    {Kind::UsbNotReady, {0, ENODEV, EACCES, EBUSY}},
    {Kind::UsbNoDeviceId, {0}},
    {Kind::UsbMismatch, {0}},
    {Kind::UsbNotSent, {0}},
    {Kind::UsbNoAnswer, {0}},
};

TEST(LineDocumentTest, EachCauseStandsInThePageThatTellsWhatToDo) {
    std::ifstream objPage(VARDEN_DOCS "/find-your-printer.md");
    std::string strPage((std::istreambuf_iterator<char>(objPage)),
                        std::istreambuf_iterator<char>());
    ASSERT_FALSE(strPage.empty());
    std::erase(strPage, '*');
    for (const Told& objTold : States) {
        for (const int iReason : objTold.m_iReasons) {
            CFailure objFailure{objTold.m_iKind};
            objFailure.m_iReason = iReason;
            objFailure.m_objSocket.m_iNumber = iReason;
            const std::string strCause = MCauseText::Of(objFailure);
            EXPECT_NE(strPage.find(strCause), std::string::npos) << strCause;
        }
    }
}

}  // namespace
