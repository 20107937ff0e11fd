#include "tests/ui/recorder/CTranscript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ::testing::ElementsAre;

class CTranscriptTest : public ::testing::Test {
protected:
    CFakeClock m_objClock;
    CTranscript m_objTranscript{m_objClock, {"first", "second"}};
};

TEST_F(CTranscriptTest, TellsBytesThatRunOnInOneLine) {
    m_objTranscript.Bytes("COM sends", "{W");
    m_objTranscript.Bytes("COM sends", "S|}");
    m_objTranscript.Bytes("COM sends", "{Z");
    m_objTranscript.Add("event");
    m_objTranscript.Bytes("COM sends", "5");
    EXPECT_THAT(m_objTranscript.Take(),
                ElementsAre("COM sends {WS|}", "COM sends {Z", "event", "COM sends 5"));
}

TEST_F(CTranscriptTest, EndsALineWhereBytesRunTheOtherWay) {
    m_objTranscript.Bytes("LAN gets", "a");
    m_objTranscript.Bytes("LAN gets", "b");
    m_objTranscript.Bytes("LAN sends", "{WS|}");
    m_objTranscript.Bytes("LAN gets", "c");
    EXPECT_THAT(m_objTranscript.Take(),
                ElementsAre("LAN gets ab", "LAN sends {WS|}", "LAN gets c"));
}

TEST_F(CTranscriptTest, KeepsTheTwoWaysOfASerialLineApart) {
    m_objTranscript.Bytes("COM sends", "{W");
    m_objTranscript.Bytes("COM gets", "ab");
    m_objTranscript.Bytes("COM sends", "S|}");
    m_objTranscript.Bytes("COM gets", "c");
    EXPECT_THAT(m_objTranscript.Take(), ElementsAre("COM sends {WS|}", "COM gets abc"));
}

TEST_F(CTranscriptTest, TellsBytesThatCannotBePrintedByTheirNumbers) {
    EXPECT_EQ(CTranscript::Printable({"\x01{<\xFF\0~", 6}), "<01>{<3C><FF><00>~");
}

TEST_F(CTranscriptTest, SaysAllOnlyForAllButtonsInTheirOrder) {
    m_objTranscript.Switched("first", false);
    m_objTranscript.Switched("second", false);
    m_objTranscript.Switched("second", true);
    m_objTranscript.Switched("first", true);
    m_objTranscript.Switched("first", false);
    EXPECT_THAT(m_objTranscript.Take(),
                ElementsAre("buttons off: all", "buttons on: second first", "buttons off: first"));
}

TEST_F(CTranscriptTest, NamesWhatIsMissingWhereMostButtonsAreSwitched) {
    CTranscript objTranscript(m_objClock, {"first", "second", "third"});
    objTranscript.Switched("first", false);
    objTranscript.Switched("third", false);
    objTranscript.Switched("third", true);
    objTranscript.Switched("second", true);
    EXPECT_THAT(objTranscript.Take(),
                ElementsAre("buttons off: all but second", "buttons on: third second"));
}

TEST_F(CTranscriptTest, BreaksARunOfButtonsWhereSomethingElseHappens) {
    m_objTranscript.Switched("first", false);
    m_objTranscript.Add("event");
    m_objTranscript.Switched("second", false);
    EXPECT_THAT(m_objTranscript.Take(),
                ElementsAre("buttons off: first", "event", "buttons off: second"));
}

TEST_F(CTranscriptTest, TellsTimeInHalfSecondsWhereItPasses) {
    m_objTranscript.Add("a");
    m_objClock.Advance(240);
    m_objTranscript.Add("b");
    m_objClock.Advance(1010);
    m_objTranscript.Add("c");
    m_objClock.Advance(5260);
    m_objTranscript.Add("d");
    EXPECT_THAT(m_objTranscript.Take(), ElementsAre("a", "b", "-- 1.0 s", "c", "-- 5.5 s", "d"));
}

TEST_F(CTranscriptTest, LooksForWhatChangesSilentlyBeforeEachLine) {
    bool bChanged = false;
    m_objTranscript.SetWatch([&] {
        if (std::exchange(bChanged, false)) {
            m_objTranscript.Add("changed");
        }
    });
    m_objTranscript.Add("a");
    bChanged = true;
    m_objTranscript.Switched("first", true);
    bChanged = true;
    EXPECT_THAT(m_objTranscript.Take(),
                ElementsAre("a", "changed", "buttons on: first", "changed"));
}

TEST_F(CTranscriptTest, TheTimeCountsFromTheTakingOn) {
    m_objTranscript.Add("a");
    m_objClock.Advance(3000);
    const std::vector<std::string> strLines = m_objTranscript.Take();
    m_objTranscript.Restore(strLines);
    m_objTranscript.Add("b");
    EXPECT_THAT(m_objTranscript.Take(), ElementsAre("a", "b"));
}

}  // namespace
