#include "platform/qt/MSerialPortName.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// A folder of devices, empty at first.
class MSerialPortNameTest : public ::testing::Test {
protected:
    void Make(const std::string& p_strName) const { std::ofstream(Path(p_strName)).put('x'); }

    [[nodiscard]] std::string Path(const std::string& p_strName) const {
        return m_objFolder.filePath(QString::fromStdString(p_strName)).toStdString();
    }

    [[nodiscard]] std::string DeviceOf(std::int16_t p_iPort) const {
        return MSerialPortName::DeviceOf(p_iPort, m_objFolder.path().toStdString());
    }

    [[nodiscard]] std::string DeviceNamed(const std::string& p_strName) const {
        return MSerialPortName::DeviceNamed(p_strName, m_objFolder.path().toStdString());
    }

    QTemporaryDir m_objFolder;
};

TEST_F(MSerialPortNameTest, TheFirstThatExistsIsIt) {
    Make("ttyS2");
    EXPECT_EQ(DeviceOf(3), Path("ttyS2"));
    Make("ttyACM2");
    EXPECT_EQ(DeviceOf(3), Path("ttyACM2"));
    Make("ttyUSB2");
    EXPECT_EQ(DeviceOf(3), Path("ttyUSB2"));
    Make("com3");
    EXPECT_EQ(DeviceOf(3), Path("com3"));
}

TEST_F(MSerialPortNameTest, EveryPortHasItsOwnNumber) {
    for (int i = 0; i < 9; ++i) {
        Make("ttyUSB" + std::to_string(i));
    }
    for (int i = 1; i <= 9; ++i) {
        EXPECT_EQ(DeviceOf(static_cast<std::int16_t>(i)), Path("ttyUSB" + std::to_string(i - 1)));
    }
}

TEST_F(MSerialPortNameTest, AnotherPortsDevicesDoNotCount) {
    for (const char* strName : {"com1", "com3", "ttyUSB0", "ttyUSB2", "ttyACM2", "ttyS0", "com"}) {
        Make(strName);
    }
    EXPECT_EQ(DeviceOf(2), "");
}

TEST_F(MSerialPortNameTest, AnAliasThatLeadsNowhereStillCounts) {
    Make("ttyUSB0");
    std::filesystem::create_symlink(Path("gone"), Path("com1"));
    EXPECT_EQ(DeviceOf(1), Path("com1"));
}

TEST_F(MSerialPortNameTest, ANumberThatIsNoPortHasNoDevice) {
    for (const char* strName : {"com0", "com-1", "ttyS-1", "ttyS-2", "ttyUSB-1"}) {
        Make(strName);
    }
    EXPECT_EQ(DeviceOf(0), "");
    EXPECT_EQ(DeviceOf(-1), "");
}

TEST_F(MSerialPortNameTest, APathIsTheDeviceAndAnyOtherNameIsOneOfTheFolder) {
    EXPECT_EQ(DeviceNamed("/dev/serial/by-id/x"), "/dev/serial/by-id/x");
    EXPECT_EQ(DeviceNamed("./com1"), "./com1");
    EXPECT_EQ(DeviceNamed("ttyUSB0"), Path("ttyUSB0"));
    EXPECT_EQ(DeviceNamed("rfcomm1"), Path("rfcomm1"));
    EXPECT_EQ(MSerialPortName::DeviceNamed("ttyS4"), "/dev/ttyS4");
}

TEST_F(MSerialPortNameTest, ComAndANumberIsThatPortInAnyLetters) {
    Make("ttyUSB2");
    for (const char* const strName : {"COM3", "com3", "Com3"}) {
        EXPECT_EQ(DeviceNamed(strName), Path("ttyUSB2"));
    }
    EXPECT_EQ(DeviceNamed("COM4"), "");
    for (const char* const strName : {"COM", "COM0", "COM3x", "COM-3", "COM 3", "XCOM3", "CO"}) {
        EXPECT_EQ(DeviceNamed(strName), Path(strName));
    }
}

TEST_F(MSerialPortNameTest, TheSystemsOwnFolderIsTheDefault) {
    EXPECT_STREQ(MSerialPortName::DeviceFolder, "/dev");
}

}  // namespace
