#include "simulator/CPrinterLog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>

namespace {

/// Two printers of one program, whose clock the test moves.
class PrinterLogTest : public ::testing::Test {
protected:
    std::chrono::steady_clock::time_point m_iNow;
    std::ostringstream m_objText;
    std::ostringstream m_objJson;
    CStreamLog m_objLines{m_objText};
    CEventLog m_objEvents{m_objJson, [this] { return m_iNow; }};
    CPrinterLog m_objSecond{{2, false, "lan"}, m_objLines, &m_objEvents};
    CPrinterLog m_objThird{{3, false, "lan"}, m_objLines, &m_objEvents};
};

TEST_F(PrinterLogTest, SaysOfEveryLineWhoseItIsWhenThatChanges) {
    m_objSecond.Line(1, "a");
    m_objSecond.Line(1, "b");
    m_objThird.Line(1, "c");
    m_objThird.Line(0, "d");
    m_objSecond.Line(1, "e");
    EXPECT_EQ(m_objText.str(), "printer 2, connection 1:\na\nb\nprinter 3, connection 1:\nc\n"
                               "printer 3:\nd\nprinter 2, connection 1:\ne\n");
}

TEST_F(PrinterLogTest, DoesNotNumberAPrinterThatIsAlone) {
    CPrinterLog objAlone({1, true, "com"}, m_objLines, nullptr);
    objAlone.Line(1, "a");
    objAlone.Line(0, "b");
    objAlone.Event(1, "received", {});
    EXPECT_EQ(m_objText.str(), "connection 1:\na\nprinter:\nb\n");
}

TEST_F(PrinterLogTest, WritesAnEventInOneLineWithItsTimeItsPrinterAndItsConnection) {
    m_objSecond.SetAddress("127.0.0.2:8000");
    m_iNow += std::chrono::milliseconds(1500);
    m_objSecond.Event(7, "closed", CJsonObject().Text("by", "peer"));
    m_iNow += std::chrono::microseconds(1);
    m_objThird.Event(0, "power", CJsonObject().Flag("on", false));
    EXPECT_EQ(m_objJson.str(),
              "{\"time\": 1.500000, \"printer\": 2, \"address\": \"127.0.0.2:8000\", \"link\": "
              "\"lan\", \"connection\": 7, \"event\": \"closed\", \"by\": \"peer\"}\n"
              "{\"time\": 1.500001, \"printer\": 3, \"address\": \"\", \"link\": \"lan\", "
              "\"event\": \"power\", \"on\": false}\n");
    EXPECT_EQ(m_objText.str(), "");
}

/// Counts how often it is flushed.
class CFlushCounter : public std::stringbuf {
public:
    int m_iFlushes = 0;

protected:
    int sync() override {
        ++m_iFlushes;
        return std::stringbuf::sync();
    }
};

TEST(EventLogTest, FlushesEveryLine) {
    CFlushCounter objBuffer;
    std::ostream objStream(&objBuffer);
    CEventLog objLog(objStream);
    objLog.Write({});
    objLog.Write({});
    EXPECT_EQ(objBuffer.m_iFlushes, 2);
}

}  // namespace
