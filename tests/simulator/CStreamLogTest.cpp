#include "simulator/CStreamLog.h"

#include "simulator/MPrintable.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

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

}  // namespace

TEST(StreamLogTest, NamesAConnectionWheneverTheLinesChangeOverToIt) {
    std::ostringstream objStream;
    CStreamLog objLog(objStream);
    objLog.Line(1, "a");
    objLog.Line(1, "b");
    objLog.Line(2, "c");
    objLog.Line(1, "d");
    EXPECT_EQ(objStream.str(), "connection 1:\na\nb\nconnection 2:\nc\nconnection 1:\nd\n");
}

TEST(StreamLogTest, FlushesEveryLine) {
    CFlushCounter objBuffer;
    std::ostream objStream(&objBuffer);
    CStreamLog objLog(objStream);
    objLog.Line(1, "a");
    EXPECT_EQ(objBuffer.m_iFlushes, 1);
    objLog.Line(1, "b");
    EXPECT_EQ(objBuffer.m_iFlushes, 2);
}

TEST(PrintableTest, ShowsEveryByteWithoutAmbiguity) {
    EXPECT_EQ(MPrintable::Printable("{Z5;0|} ~"), "{Z5;0|} ~");
    EXPECT_EQ(MPrintable::Printable(std::string("\0\x01\x1F\x7F\x80\xFF\r\n", 8)),
              "<00><01><1F><7F><80><FF><0D><0A>");
    EXPECT_EQ(MPrintable::Printable("<FF>"), "<3C>FF>");
}

TEST(PrintableTest, CountsBytesInWords) {
    EXPECT_EQ(MPrintable::ByteCount(0), "0 bytes");
    EXPECT_EQ(MPrintable::ByteCount(1), "1 byte");
    EXPECT_EQ(MPrintable::ByteCount(27), "27 bytes");
}
