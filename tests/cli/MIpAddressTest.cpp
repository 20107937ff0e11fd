#include "cli/MIpAddress.h"

#include <gtest/gtest.h>

TEST(MIpAddress, V4) {
    for (const char* const strText : {"0.0.0.0", "192.168.10.20", "255.255.255.255", "010.0.0.1"}) {
        EXPECT_TRUE(MIpAddress::IsV4(strText)) << strText;
    }
    for (const char* const strText : {"", "1", "1.2.3", "1.2.3.", "1.2.3.4.5", "1.2.3.256",
                                      "1..2.3", "a.2.3.4", "1.2.3.4 ", "-1.2.3.4", "0001.2.3.4"}) {
        EXPECT_FALSE(MIpAddress::IsV4(strText)) << strText;
    }
}

TEST(MIpAddress, V6) {
    for (const char* const strText :
         {"::", "::1", "1::", "fe80::1", "2001:db8:0:0:0:0:2:1", "2001:DB8::2:1",
          "::ffff:192.168.1.2", "1:2:3:4:5:6:1.2.3.4", "fe80::1%eth0", "1:2:3:4:5:6:7::"}) {
        EXPECT_TRUE(MIpAddress::IsV6(strText)) << strText;
    }
    for (const char* const strText :
         {"", ":", ":::", "1", "1:2:3:4:5:6:7", "1:2:3:4:5:6:7:8:9", "1::2::3", "12345::", "g::1",
          "::1.2.3", "1.2.3.4::", "1:", ":1", "fe80::1%", "::1%eth0]:r\r", "fe80::1%eth 0",
          "1:2:3:4:5:6:7:8::", "::1 "}) {
        EXPECT_FALSE(MIpAddress::IsV6(strText)) << strText;
    }
}

TEST(MIpAddress, HostNames) {
    for (const char* const strText :
         {"printer", "label-7.shop.example", "a_b", "10.0.0.1", "7-eleven", "a.b."}) {
        EXPECT_TRUE(MIpAddress::IsHostName(strText)) << strText;
    }
    for (const char* const strText :
         {"", ".a", "a..b", "a b", "a/b", "-a", "10.0.0", "1.2.3.999", "12", "a:b"}) {
        EXPECT_FALSE(MIpAddress::IsHostName(strText)) << strText;
    }
}
