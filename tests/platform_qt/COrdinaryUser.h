#pragma once

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <string>

/// Whoever runs the tests is an ordinary user while this lives: root may do everything. The folder
/// can be looked into, and the serial line is that user's.
class COrdinaryUser {
public:
    COrdinaryUser(const std::string& p_strDevices, const std::string& p_strLine) {
        if (m_bRoot) {
            EXPECT_EQ(::chmod(p_strDevices.c_str(), 0755), 0);
            EXPECT_EQ(::chown(p_strLine.c_str(), Nobody, Nobody), 0);
            EXPECT_EQ(::seteuid(Nobody), 0);
        }
    }
    ~COrdinaryUser() {
        if (m_bRoot) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }
    COrdinaryUser(const COrdinaryUser&) = delete;
    COrdinaryUser& operator=(const COrdinaryUser&) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    bool m_bRoot = ::geteuid() == 0;
};
