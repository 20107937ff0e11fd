#include "platform/qt/CQtSerialPortLister.h"

#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>

namespace {

using Numbers = std::vector<std::int16_t>;

/// A folder of devices, some of which the system knows.
class CQtSerialPortListerTest : public ::testing::Test {
protected:
    CSerialPortEntry Known(const std::string& p_strName) {
        m_objFolder.Make(p_strName, "");
        CSerialPortEntry objEntry;
        objEntry.m_strDevice = m_objFolder.Path(p_strName);
        return objEntry;
    }

    void Alias(const std::string& p_strName, const std::string& p_strTarget) {
        std::filesystem::create_symlink(p_strTarget, m_objFolder.Path(p_strName));
    }

    std::vector<CSerialPortEntry> AddTo(std::vector<CSerialPortEntry> p_objEntries) {
        CQtSerialPortLister(m_objFolder.Path()).AddComNumbers(p_objEntries);
        return p_objEntries;
    }

    CFolder m_objFolder;
};

TEST_F(CQtSerialPortListerTest, EachPortHasTheNumberThatTheWindowKnowsItBy) {
    const auto objEntries =
        AddTo({Known("ttyUSB0"), Known("ttyACM2"), Known("ttyS0"), Known("ttyS8"), Known("ttyS9")});
    EXPECT_EQ(objEntries[0].m_iComNumbers, Numbers{1});
    EXPECT_EQ(objEntries[1].m_iComNumbers, Numbers{3});
    EXPECT_EQ(objEntries[2].m_iComNumbers, Numbers{}) << "ttyUSB0 is COM1";
    EXPECT_EQ(objEntries[3].m_iComNumbers, Numbers{9});
    EXPECT_EQ(objEntries[4].m_iComNumbers, Numbers{}) << "the list ends with COM9";
}

TEST_F(CQtSerialPortListerTest, AnAliasIsAnotherNumberOfItsDevice) {
    Alias("com4", "ttyUSB0");
    const auto objEntries = AddTo({Known("ttyUSB0")});
    ASSERT_EQ(objEntries.size(), 1U);
    EXPECT_EQ(objEntries[0].m_iComNumbers, (Numbers{1, 4}));
}

TEST_F(CQtSerialPortListerTest, AnAliasOfWhatTheSystemDoesNotKnowIsAPort) {
    m_objFolder.Make("pts", "");
    Alias("com2", "pts");
    const auto objEntries = AddTo({});
    ASSERT_EQ(objEntries.size(), 1U);
    EXPECT_EQ(objEntries[0].m_strDevice, m_objFolder.Path("com2"));
    EXPECT_EQ(objEntries[0].m_iComNumbers, Numbers{2});
}

TEST_F(CQtSerialPortListerTest, AnAliasThatLeadsNowhereIsNoPortAndTakesItsNumber) {
    Alias("com1", "gone");
    const auto objEntries = AddTo({Known("ttyUSB0")});
    ASSERT_EQ(objEntries.size(), 1U);
    EXPECT_EQ(objEntries[0].m_iComNumbers, Numbers{});
}

TEST_F(CQtSerialPortListerTest, AFileForAPortThatWasNeverBuiltInIsNone) {
    m_objFolder.Make("ttyS3", "");
    EXPECT_TRUE(AddTo({}).empty());
}

TEST_F(CQtSerialPortListerTest, TheSystemsOwnPortsComeByTheirNames) {
    std::vector<std::string> strNames;
    for (const CSerialPortEntry& objEntry : CQtSerialPortLister().SerialPorts()) {
        EXPECT_TRUE(objEntry.m_strDevice.starts_with("/dev/")) << objEntry.m_strDevice;
        strNames.push_back(objEntry.m_strDevice);
    }
    EXPECT_TRUE(std::is_sorted(strNames.begin(), strNames.end()));
}

}  // namespace
