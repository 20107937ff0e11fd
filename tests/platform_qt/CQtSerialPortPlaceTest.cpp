#include "platform/qt/MSerialOpenResult.h"
#include "tests/platform_qt/COrdinaryUser.h"
#include "tests/platform_qt/CSerialPortFixture.h"

#include <fstream>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

#include <cerrno>

namespace {

constexpr std::int32_t Opened = ISerialPort::Opened;

/// A port that was named beforehand, set up all the same as the link to the printer does it.
class CQtSerialPortPlaceTest : public CSerialPortFixture {
protected:
    std::int32_t Open(const std::string& p_strDevice,
                      const std::string& p_strSettings = "19200,N,8,2") {
        m_objPlaced = std::make_unique<CQtSerialPort>(m_objLineState,
                                                      CSerialPlace{p_strDevice, p_strSettings});
        SetUpPort(*m_objPlaced);
        return m_objPlaced->Open();
    }

    std::unique_ptr<CQtSerialPort> m_objPlaced;
};

TEST_F(CQtSerialPortPlaceTest, OpensItsOwnDeviceInItsOwnFormat) {
    const CTestTerminal objOther;
    ASSERT_EQ(Open(objOther.Name()), Opened);
    termios objNow{};
    ASSERT_EQ(::tcgetattr(objOther.NearEnd(), &objNow), 0);
    EXPECT_EQ(::cfgetospeed(&objNow), speed_t{B19200});
    EXPECT_NE(objNow.c_cflag & CSTOPB, 0U);
    EXPECT_EQ(CallOpen(), Opened) << "COM1 is another one";
}

TEST_F(CQtSerialPortPlaceTest, OpensTheDeviceBehindALink) {
    EXPECT_EQ(Open(Path("com1")), Opened);
}

TEST_F(CQtSerialPortPlaceTest, ADeviceThatIsNotThereIsToldByTheSystemsNumber) {
    EXPECT_EQ(Open(Path("nothing")), ENOENT);
    EXPECT_EQ(Open(""), ENOENT);
    EXPECT_FALSE(m_objPlaced->IsOpen());
}

TEST_F(CQtSerialPortPlaceTest, SoIsWhatIsNoSerialPort) {
    std::ofstream(Path("file")).put('x');
    EXPECT_EQ(Open(Path("file")), ENOTTY);
    std::filesystem::create_directory(Path("folder"));
    EXPECT_EQ(Open(Path("folder")), EISDIR);
    EXPECT_EQ(Open("/dev/null"), ENOTTY);
}

TEST_F(CQtSerialPortPlaceTest, SoIsADeviceThatIsNotPermitted) {
    const COrdinaryUser objUser(m_objDevices.path().toStdString(), m_objLine->Name());
    ASSERT_EQ(::chmod(m_objLine->Name().c_str(), 0), 0);
    EXPECT_EQ(Open(m_objLine->Name()), EACCES);
    ASSERT_EQ(::chmod(m_objLine->Name().c_str(), 0600), 0);
    EXPECT_EQ(Open(m_objLine->Name()), Opened);
    m_objPlaced->Close();
}

TEST_F(CQtSerialPortPlaceTest, APortThatIsHeldIsAlreadyOpen) {
    ASSERT_EQ(CallOpen(), Opened);
    EXPECT_EQ(Open(m_objLine->Name()), ISerialPort::AlreadyOpen);
    CallClose();
    const COrdinaryUser objUser(m_objDevices.path().toStdString(), m_objLine->Name());
    ASSERT_EQ(::ioctl(m_objLine->NearEnd(), TIOCEXCL), 0);
    EXPECT_EQ(Open(m_objLine->Name()), ISerialPort::AlreadyOpen);
    ASSERT_EQ(::ioctl(m_objLine->NearEnd(), TIOCNXCL), 0);
}

TEST_F(CQtSerialPortPlaceTest, AFormatThatIsNoneFailsWithoutANumberOfTheSystems) {
    EXPECT_EQ(Open(m_objLine->Name(), "9600,M,8,1"), MSerialOpenResult::NotOpened);
}

}  // namespace
