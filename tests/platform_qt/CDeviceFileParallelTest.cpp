#include "platform/qt/CDeviceFileParallel.h"

#include "tests/platform_qt/CTestDriver.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdint>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

class CDeviceFileParallelTest : public ::testing::Test {
protected:
    void TearDown() override { CTestDriver::Instance().Forget(); }

    std::int32_t Write(std::int32_t p_iHandle, const std::string& p_strBytes) {
        return m_objPort.DeviceWrite(
            p_iHandle,
            {reinterpret_cast<const std::uint8_t*>(p_strBytes.data()), p_strBytes.size()});
    }

    /// Makes the device one that somebody reads slowly or not at all; its reading end.
    int MakeFifo() {
        EXPECT_EQ(::mkfifo(m_strPath.c_str(), 0600), 0);
        return ::open(m_strPath.c_str(), O_RDONLY | O_NONBLOCK);
    }

    QTemporaryDir m_objFolder;
    std::string m_strPath = m_objFolder.filePath("lp0").toStdString();
    CDeviceFileParallel m_objPort{m_strPath};
};

TEST_F(CDeviceFileParallelTest, WritesEveryByteAsItIs) {
    QFile objFile(QString::fromStdString(m_strPath));
    ASSERT_TRUE(objFile.open(QIODevice::WriteOnly));
    objFile.close();
    std::string strBytes;
    for (int i = 0; i < 256; ++i) {
        strBytes += static_cast<char>(i);
    }
    const std::int32_t iHandle = m_objPort.DeviceOpen("LPT1:");
    ASSERT_NE(iHandle, IParallelLibrary::NoHandle);
    m_objPort.DeviceTimeoutSet(iHandle, 1000);
    EXPECT_EQ(Write(iHandle, strBytes), 256);
    EXPECT_EQ(Write(iHandle, "{WS|}"), 5);
    EXPECT_EQ(Write(iHandle, ""), 0);
    m_objPort.DeviceClose(iHandle);
    ASSERT_TRUE(objFile.open(QIODevice::ReadOnly));
    EXPECT_EQ(objFile.readAll().toStdString(), strBytes + "{WS|}");
}

TEST_F(CDeviceFileParallelTest, ADeviceThatIsNotThereIsNotMade) {
    EXPECT_EQ(m_objPort.DeviceOpen("LPT1:"), IParallelLibrary::NoHandle);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(m_strPath)));
}

TEST_F(CDeviceFileParallelTest, OnlyTheFirstPortHasADevice) {
    const int iReader = MakeFifo();
    EXPECT_EQ(m_objPort.DeviceOpen("LPT2:"), IParallelLibrary::NoHandle);
    EXPECT_EQ(m_objPort.DeviceOpen(""), IParallelLibrary::NoHandle);
    EXPECT_NE(m_objPort.DeviceOpen("LPT1:"), IParallelLibrary::NoHandle);
    ::close(iReader);
}

TEST_F(CDeviceFileParallelTest, APrinterThatTakesNothingMoreIsGivenUpInTime) {
    const int iReader = MakeFifo();
    const std::int32_t iHandle = m_objPort.DeviceOpen("LPT1:");
    m_objPort.DeviceTimeoutSet(iHandle, 100);
    const std::string strBytes(1 << 20, 'x');
    QElapsedTimer objTime;
    objTime.start();
    const std::int32_t iWritten = Write(iHandle, strBytes);
    EXPECT_GT(iWritten, 0);
    EXPECT_LT(iWritten, 1 << 20);
    EXPECT_GE(objTime.elapsed(), 95);
    EXPECT_EQ(Write(iHandle, "x"), 0);
    m_objPort.DeviceClose(iHandle);
    ::close(iReader);
}

TEST_F(CDeviceFileParallelTest, APrinterThatSaysItHasRoomAndTakesNothingIsGivenUpInTime) {
    const int iReader = MakeFifo();
    const std::int32_t iHandle = m_objPort.DeviceOpen("LPT1:");
    m_objPort.DeviceTimeoutSet(iHandle, 200);
    CTestDriver::Instance().m_iRefusing = iHandle;
    QElapsedTimer objTime;
    objTime.start();
    EXPECT_EQ(Write(iHandle, "{WS|}"), 0);
    EXPECT_GE(objTime.elapsed(), 195);
    EXPECT_LE(objTime.elapsed(), 2000);
    EXPECT_GE(CTestDriver::Instance().m_iRefusals, 2);
    EXPECT_LE(CTestDriver::Instance().m_iRefusals, 100) << "it keeps the processor busy";
    m_objPort.DeviceClose(iHandle);
    ::close(iReader);
}

TEST_F(CDeviceFileParallelTest, APrinterThatRefusesAtFirstGetsEverything) {
    const int iReader = MakeFifo();
    const std::int32_t iHandle = m_objPort.DeviceOpen("LPT1:");
    m_objPort.DeviceTimeoutSet(iHandle, 5000);
    CTestDriver::Instance().m_iRefusing = iHandle;
    CTestDriver::Instance().m_iMostRefusals = 3;
    EXPECT_EQ(Write(iHandle, "{WS|}"), 5);
    EXPECT_EQ(CTestDriver::Instance().m_iRefusals, 3);
    std::string strTaken(10, ' ');
    EXPECT_EQ(::read(iReader, strTaken.data(), strTaken.size()), 5);
    EXPECT_EQ(strTaken.substr(0, 5), "{WS|}");
    m_objPort.DeviceClose(iHandle);
    ::close(iReader);
}

TEST_F(CDeviceFileParallelTest, ASlowPrinterGetsEverything) {
    const int iReader = MakeFifo();
    const std::int32_t iHandle = m_objPort.DeviceOpen("LPT1:");
    m_objPort.DeviceTimeoutSet(iHandle, 20'000);
    constexpr std::size_t iCount = 300'000;
    std::string strTaken;
    std::thread objPrinter([&] {
        std::vector<char> objBlock(20'000);
        while (strTaken.size() < iCount) {
            const ssize_t iTaken = ::read(iReader, objBlock.data(), objBlock.size());
            if (iTaken == 0) {
                break;
            }
            if (iTaken > 0) {
                strTaken.append(objBlock.data(), static_cast<std::size_t>(iTaken));
            }
            ::usleep(1000);
        }
    });
    std::string strBytes;
    for (std::size_t i = 0; i < iCount; ++i) {
        strBytes += static_cast<char>(i * 7919 >> 3);
    }
    EXPECT_EQ(Write(iHandle, strBytes), static_cast<std::int32_t>(iCount));
    m_objPort.DeviceClose(iHandle);
    objPrinter.join();
    EXPECT_TRUE(strTaken == strBytes);
    ::close(iReader);
}

TEST_F(CDeviceFileParallelTest, AHandleThatWasGivenBackTakesNothing) {
    const int iReader = MakeFifo();
    const std::int32_t iHandle = m_objPort.DeviceOpen("LPT1:");
    m_objPort.DeviceClose(iHandle);
    EXPECT_EQ(Write(iHandle, "x"), 0);
    m_objPort.DeviceTimeoutSet(iHandle, 100);
    m_objPort.DeviceClose(iHandle);
    EXPECT_EQ(Write(iHandle, "x"), 0);
    EXPECT_EQ(Write(IParallelLibrary::NoHandle, "x"), 0);
    char cByte = 0;
    EXPECT_EQ(::read(iReader, &cByte, 1), 0);
    ::close(iReader);
}

}  // namespace
