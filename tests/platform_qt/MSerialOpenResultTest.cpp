#include "platform/qt/MSerialOpenResult.h"

#include "platform/ISerialPort.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_qt/COrdinaryUser.h"
#include "tests/platform_qt/CTestTerminal.h"

#include <gtest/gtest.h>

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using MSerialOpenResult::NotOpened;

constexpr std::int32_t AlreadyOpen = ISerialPort::AlreadyOpen;

/// A serial line that nobody has, and two folders for lock files, empty.
class MSerialOpenResultTest : public ::testing::Test {
protected:
    std::int32_t Result(QSerialPort::SerialPortError p_iError = QSerialPort::PermissionError) {
        return MSerialOpenResult::Of(p_iError, QString::fromStdString(m_objLine.Name()),
                                     m_strFolders);
    }

    /// The result in a process of somebody who may look into the folders, and no more.
    std::int32_t ResultForNobody() {
        constexpr uid_t iNobody = 65534;
        Permit(0555);
        const pid_t iProcess = ::fork();
        if (iProcess == 0) {
            const bool bNobody =
                ::geteuid() != 0 || (::setgid(iNobody) == 0 && ::setuid(iNobody) == 0);
            ::_exit(!bNobody ? 2 : Result() == AlreadyOpen ? 1 : 0);
        }
        int iStatus = 0;
        EXPECT_EQ(::waitpid(iProcess, &iStatus, 0), iProcess);
        EXPECT_TRUE(WIFEXITED(iStatus) && WEXITSTATUS(iStatus) < 2);
        Permit(0755);
        return WEXITSTATUS(iStatus) == 1 ? AlreadyOpen : NotOpened;
    }

    void Permit(mode_t p_iMode) const {
        EXPECT_EQ(::chmod(m_objFirst.Path().c_str(), p_iMode), 0);
        EXPECT_EQ(::chmod(m_objSecond.Path().c_str(), p_iMode), 0);
    }

    /// "LCK..pts_3" for /dev/pts/3.
    [[nodiscard]] std::string LockName() const {
        std::string strName = m_objLine.Name().substr(std::string("/dev/").size());
        strName.at(strName.find('/')) = '_';
        return "LCK.." + strName;
    }

    CTestTerminal m_objLine;
    CFolder m_objFirst;
    CFolder m_objSecond;
    QStringList m_strFolders{QString::fromStdString(m_objFirst.Path()),
                             QString::fromStdString(m_objSecond.Path())};
};

TEST_F(MSerialOpenResultTest, TheNumbersDiffer) {
    EXPECT_EQ(AlreadyOpen, 8005);
    EXPECT_NE(NotOpened, AlreadyOpen);
    EXPECT_NE(NotOpened, ISerialPort::Opened);
}

TEST_F(MSerialOpenResultTest, APortWithALockIsAnotherPrograms) {
    EXPECT_EQ(Result(), NotOpened);
    m_objFirst.Make("LCK..pts_", "1234");
    m_objFirst.Make(LockName() + "0", "1234");
    EXPECT_EQ(Result(), NotOpened) << "that of other ports";
    m_objFirst.Make(LockName(), "1234");
    EXPECT_EQ(Result(), AlreadyOpen);
}

TEST_F(MSerialOpenResultTest, ALockCountsInTheFirstFolderThatIsUsed) {
    m_objSecond.Make(LockName(), "1234");
    EXPECT_EQ(Result(), NotOpened) << "a lock would be made in the first";
    m_strFolders.first() += "/is not there";
    EXPECT_EQ(Result(), AlreadyOpen);
}

TEST_F(MSerialOpenResultTest, AFolderThatMayNotBeWrittenIsNotUsedButForTheLocksInIt) {
    m_objSecond.Make(LockName(), "1234");
    EXPECT_EQ(ResultForNobody(), AlreadyOpen);
    fs::rename(m_objSecond.Path(LockName()), m_objFirst.Path(LockName()));
    EXPECT_EQ(ResultForNobody(), AlreadyOpen);
    fs::remove(m_objFirst.Path(LockName()));
    EXPECT_EQ(ResultForNobody(), NotOpened);
}

TEST_F(MSerialOpenResultTest, ABusyPortIsAnotherPrograms) {
    const COrdinaryUser objUser(m_objFirst.Path(), m_objLine.Name());
    ASSERT_EQ(::ioctl(m_objLine.NearEnd(), TIOCEXCL), 0);
    EXPECT_EQ(Result(), AlreadyOpen);
    ASSERT_EQ(::ioctl(m_objLine.NearEnd(), TIOCNXCL), 0);
    EXPECT_EQ(Result(), NotOpened);
}

TEST_F(MSerialOpenResultTest, WhatIsNotPermittedIsNot) {
    const COrdinaryUser objUser(m_objFirst.Path(), m_objLine.Name());
    ASSERT_EQ(::chmod(m_objLine.Name().c_str(), 0), 0);
    EXPECT_EQ(Result(), NotOpened);
}

TEST_F(MSerialOpenResultTest, NorIsAnyOtherErrorWhateverTheLock) {
    m_objFirst.Make(LockName(), "1234");
    const std::vector<QSerialPort::SerialPortError> iErrors{
        QSerialPort::DeviceNotFoundError, QSerialPort::OpenError,
        QSerialPort::ResourceError,       QSerialPort::UnsupportedOperationError,
        QSerialPort::UnknownError,        QSerialPort::NoError};
    for (const auto iError : iErrors) {
        EXPECT_EQ(Result(iError), NotOpened) << iError;
    }
}

}  // namespace
