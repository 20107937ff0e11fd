#include "platform/qt/CDeviceAccess.h"

#include "tests/platform_qt/CFolder.h"
#include "tests/platform_qt/CTestTerminal.h"

#include <gtest/gtest.h>

#include <functional>
#include <grp.h>
#include <sys/wait.h>

namespace {

using Use = CDeviceState::Use;

class CDeviceAccessTest : public ::testing::Test {
protected:
    /// Looks at a device as somebody who is neither its owner nor in its group.
    CDeviceState LookAsAnother(const std::string& p_strDevice) const {
        if (::getuid() != 0) {
            return m_objAccess.Look(
                p_strDevice);  // root alone may do anything; we are another already
        }
        int iEnds[2]{};
        EXPECT_EQ(::pipe(iEnds), 0);
        const pid_t iChild = ::fork();
        if (iChild == 0) {
            constexpr unsigned iNobody = 65534;
            const bool bChanged =
                ::setgroups(0, nullptr) == 0 && ::setgid(iNobody) == 0 && ::setuid(iNobody) == 0;
            const CDeviceState objState = m_objAccess.Look(p_strDevice);
            const std::string strText =
                std::to_string(bChanged ? static_cast<int>(objState.m_iUse) : -1) +
                objState.m_strGroup;
            [[maybe_unused]] const auto iWritten =
                ::write(iEnds[1], strText.data(), strText.size());
            ::_exit(0);
        }
        ::close(iEnds[1]);
        char strText[128]{};
        const ssize_t iCount = ::read(iEnds[0], strText, sizeof strText - 1);
        ::close(iEnds[0]);
        ::waitpid(iChild, nullptr, 0);
        EXPECT_GT(iCount, 0);
        CDeviceState objState;
        objState.m_iUse = static_cast<Use>(strText[0] - '0');
        objState.m_strGroup = strText + 1;
        return objState;
    }

    void Lock(const std::string& p_strDevice, const std::string& p_strContent) const {
        m_objFolder.Make("LCK.." + p_strDevice, p_strContent);
    }

    static std::string Me() { return "(" + std::to_string(::getpid()) + ")"; }

    CFolder m_objFolder;
    CDeviceAccess m_objAccess{{m_objFolder.Path("none"), m_objFolder.Path()}};
};

TEST_F(CDeviceAccessTest, WhatIsNotThereIsMissing) {
    EXPECT_EQ(m_objAccess.Look(m_objFolder.Path("ttyUSB0")).m_iUse, Use::Missing);
    std::filesystem::create_symlink("gone", m_objFolder.Path("com1"));
    EXPECT_EQ(m_objAccess.Look(m_objFolder.Path("com1")).m_iUse, Use::Missing);
}

TEST_F(CDeviceAccessTest, WhatNobodyHasCanBeUsed) {
    m_objFolder.Make("ttyUSB0", "");
    const CDeviceState objState = m_objAccess.Look(m_objFolder.Path("ttyUSB0"));
    EXPECT_EQ(objState.m_iUse, Use::Possible);
    EXPECT_EQ(objState.m_strHolder, "");
}

TEST_F(CDeviceAccessTest, WithoutPermissionTheGroupThatHasItIsTold) {
    m_objFolder.Make("ttyUSB0", "");
    const std::string strDevice = m_objFolder.Path("ttyUSB0");
    std::filesystem::permissions(m_objFolder.Path(), std::filesystem::perms::all);
    const group* const objGroup = ::getgrnam("dialout");
    ASSERT_NE(objGroup, nullptr);
    if (::getuid() == 0) {
        ASSERT_EQ(::chown(strDevice.c_str(), 0, objGroup->gr_gid), 0);
        ASSERT_EQ(::chmod(strDevice.c_str(), 0660), 0);
        const CDeviceState objState = LookAsAnother(strDevice);
        EXPECT_EQ(objState.m_iUse, Use::Forbidden);
        EXPECT_EQ(objState.m_strGroup, "dialout");
        // A group that may only read opens no port.
        ASSERT_EQ(::chmod(strDevice.c_str(), 0640), 0);
        EXPECT_EQ(LookAsAnother(strDevice).m_strGroup, "");
        ASSERT_EQ(::chmod(strDevice.c_str(), 0666), 0);
        EXPECT_EQ(LookAsAnother(strDevice).m_iUse, Use::Possible);
        ASSERT_EQ(::chown(strDevice.c_str(), 0, 0), 0);
    }
    ASSERT_EQ(::chmod(strDevice.c_str(), 0), 0);
    const CDeviceState objState = LookAsAnother(strDevice);
    EXPECT_EQ(objState.m_iUse, Use::Forbidden);
    EXPECT_EQ(objState.m_strGroup, "");
}

TEST_F(CDeviceAccessTest, WhoHasItOpenIsTold) {
    const CTestTerminal objTerminal;
    const CDeviceState objState = m_objAccess.Look(objTerminal.Name());
    EXPECT_EQ(objState.m_iUse, Use::Held);
    EXPECT_TRUE(objState.m_strHolder.ends_with(Me())) << objState.m_strHolder;
    EXPECT_FALSE(objState.m_strHolder.starts_with("process ")) << objState.m_strHolder;
}

TEST_F(CDeviceAccessTest, ALinkIsHeldWithItsDevice) {
    const CTestTerminal objTerminal;
    std::filesystem::create_symlink(objTerminal.Name(), m_objFolder.Path("com1"));
    EXPECT_EQ(m_objAccess.Look(m_objFolder.Path("com1")).m_iUse, Use::Held);
}

TEST_F(CDeviceAccessTest, WhoHasLockedItIsTold) {
    m_objFolder.Make("ttyUSB0", "");
    const std::string strMe = std::to_string(::getpid());
    // As programs write it: padded, and with more behind.
    for (const std::string& strContent : {"     " + strMe + "\n", strMe + "\nprogram\nhost\n"}) {
        Lock("ttyUSB0", strContent);
        const CDeviceState objState = m_objAccess.Look(m_objFolder.Path("ttyUSB0"));
        EXPECT_EQ(objState.m_iUse, Use::Held);
        EXPECT_TRUE(objState.m_strHolder.ends_with(Me())) << objState.m_strHolder;
    }
}

TEST_F(CDeviceAccessTest, ALockThatIsLeftOverHoldsNothing) {
    m_objFolder.Make("ttyUSB0", "");
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        ::_exit(0);
    }
    ::waitpid(iChild, nullptr, 0);
    for (const std::string& strContent :
         {std::to_string(iChild), std::string("nonsense"), std::string(), std::string("-1")}) {
        Lock("ttyUSB0", strContent);
        EXPECT_EQ(m_objAccess.Look(m_objFolder.Path("ttyUSB0")).m_iUse, Use::Possible)
            << strContent;
    }
}

TEST_F(CDeviceAccessTest, NothingIsOpened) {
    // A pipe that nobody reads from: opening it would wait.
    const std::string strPipe = m_objFolder.Path("pipe");
    ASSERT_EQ(::mkfifo(strPipe.c_str(), 0666), 0);
    EXPECT_EQ(m_objAccess.Look(strPipe).m_iUse, Use::Possible);
}

}  // namespace
