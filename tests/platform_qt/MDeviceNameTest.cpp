#include "platform/qt/MDeviceName.h"

#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>

namespace {

class MDeviceNameTest : public ::testing::Test {
protected:
    void Link(const std::string& p_strName, const std::string& p_strTarget) const {
        std::filesystem::create_symlink(p_strTarget, m_objFolder.Path(p_strName));
    }
    [[nodiscard]] std::string OwnName(const std::string& p_strName) const {
        return MDeviceName::OwnName(m_objFolder.Path(p_strName));
    }

    CFolder m_objFolder;
};

TEST_F(MDeviceNameTest, ADeviceIsItself) {
    m_objFolder.Make("ttyUSB0", "");
    EXPECT_EQ(OwnName("ttyUSB0"), m_objFolder.Path("ttyUSB0"));
    EXPECT_EQ(MDeviceName::OwnName("/dev/null"), "/dev/null");
}

TEST_F(MDeviceNameTest, LinksAreFollowed) {
    m_objFolder.Make("ttyUSB0", "");
    std::filesystem::create_directories(m_objFolder.Path("serial/by-id"));
    Link("serial/by-id/adapter", "../../ttyUSB0");
    Link("com1", "serial/by-id/adapter");
    Link("com2", m_objFolder.Path("com1"));
    for (const char* const strName : {"serial/by-id/adapter", "com1", "com2"}) {
        EXPECT_EQ(OwnName(strName), m_objFolder.Path("ttyUSB0")) << strName;
    }
}

TEST_F(MDeviceNameTest, WhatLeadsNowhereHasNone) {
    Link("com1", "gone");
    Link("com2", "com3");
    Link("com3", "com2");
    for (const char* const strName : {"com1", "com2", "none"}) {
        EXPECT_EQ(OwnName(strName), "") << strName;
    }
}

}  // namespace
