#include "cli/CTarget.h"

#include "cli/CCommandError.h"

#include <gtest/gtest.h>

namespace {

/// The failure that a text brings; nothing of it is left out.
CCommandError::Texts Refused(const std::string& p_strText) {
    try {
        CTarget::Parse(p_strText);
    } catch (const CCommandError& objError) {
        EXPECT_EQ(objError.Code(), MExitCode::Wrong);
        EXPECT_EQ(objError.Words().m_strTarget, p_strText);
        return objError.Words();
    }
    ADD_FAILURE() << p_strText << " is taken";
    return {};
}

void ExpectLan(const std::string& p_strText, const std::string& p_strHost, int p_iPort) {
    SCOPED_TRACE(p_strText);
    const CTarget objTarget = CTarget::Parse(p_strText);
    EXPECT_EQ(objTarget.m_iLink, CTarget::Link::Lan);
    EXPECT_EQ(objTarget.m_strText, p_strText);
    EXPECT_EQ(objTarget.m_strHost, p_strHost);
    EXPECT_EQ(objTarget.m_iPort, p_iPort);
}

}  // namespace

TEST(CTarget, NamesAndAddressesOnTheLan) {
    ExpectLan("lan:printer", "printer", 8000);
    ExpectLan("lan:label-7.shop.example:9100", "label-7.shop.example", 9100);
    ExpectLan("lan:192.168.10.20", "192.168.10.20", 8000);
    ExpectLan("lan:192.168.10.20:65535", "192.168.10.20", 65535);
}

TEST(CTarget, Ipv6InBrackets) {
    ExpectLan("lan:[::1]", "::1", 8000);
    ExpectLan("lan:[fe80::1%eth0]:1", "fe80::1%eth0", 1);
}

TEST(CTarget, Ipv6WithoutBracketsWhereNothingIsDoubtful) {
    ExpectLan("lan:fe80::1", "fe80::1", 8000);
    ExpectLan("lan:::1", "::1", 8000);
    ExpectLan("lan:2001:db8:0:0:0:0:2:1", "2001:db8:0:0:0:0:2:1", 8000);
    ExpectLan("lan:2001:db8::beef", "2001:db8::beef", 8000);
    ExpectLan("lan:2001:db8::", "2001:db8::", 8000);
}

TEST(CTarget, Ipv6ThatCouldEndWithAPortIsRefusedWithBothReadings) {
    EXPECT_EQ(Refused("lan:::1:8000").m_strHint, "lan:[::1]:8000 or lan:[::1:8000]");
    EXPECT_EQ(Refused("lan:fe80::1:22").m_strHint, "lan:[fe80::1]:22 or lan:[fe80::1:22]");
}

TEST(CTarget, WhatIsNoAddressOnTheLanIsRefused) {
    for (const char* const strText :
         {"lan:", "lan::8000", "lan:a b", "lan:printer:", "lan:printer:0", "lan:printer:65536",
          "lan:printer:http", "lan:printer:-1", "lan:1.2.3.999", "lan:[::1", "lan:[]",
          "lan:[printer]", "lan:[::1]8000", "lan:[::1]:", "lan:1:2:3",
          "lan:2001:db8:0:0:0:0:2:1:8000"}) {
        EXPECT_NE(Refused(strText).m_strHint, "") << strText;
        EXPECT_NE(Refused(strText).m_strCause, "") << strText;
    }
}

TEST(CTarget, SerialPorts) {
    CTarget objTarget = CTarget::Parse("com:/dev/ttyUSB0");
    EXPECT_EQ(objTarget.m_iLink, CTarget::Link::Com);
    EXPECT_EQ(objTarget.m_strDevice, "/dev/ttyUSB0");
    EXPECT_EQ(objTarget.m_strLine, "9600,E,8,1");
    objTarget = CTarget::Parse("com:COM1,115200,N,7,2");
    EXPECT_EQ(objTarget.m_strDevice, "COM1");
    EXPECT_EQ(objTarget.m_strLine, "115200,N,7,2");
}

TEST(CTarget, WhatIsNoSerialPortIsRefused) {
    for (const char* const strText : {"com:", "com:,9600,E,8,1", "com:ttyUSB0,", "com:ttyUSB0,9600",
                                      "com:ttyUSB0,9601,E,8,1", "com:ttyUSB0,9600,E,8,1,"}) {
        EXPECT_NE(Refused(strText).m_strHint, "") << strText;
    }
}

TEST(CTarget, Usb) {
    EXPECT_EQ(CTarget::Parse("usb").m_iLink, CTarget::Link::Usb);
    EXPECT_EQ(CTarget::Parse("usb").m_iBus, 0);
    EXPECT_EQ(CTarget::Parse("usb").m_strSerialNumber, "");
}

TEST(CTarget, UsbByItsPort) {
    const CTarget objTarget = CTarget::Parse("usb:1-2.13.4");
    EXPECT_EQ(objTarget.m_iBus, 1);
    EXPECT_EQ(objTarget.m_iPorts, (std::vector<int>{2, 13, 4}));
    EXPECT_EQ(objTarget.m_strSerialNumber, "");
    EXPECT_EQ(CTarget::Parse("usb:2-1").m_iPorts, std::vector<int>{1});
}

TEST(CTarget, UsbByItsSerialNumberIsWhateverIsNoPort) {
    for (const char* const strNumber : {"ABC123", "1-", "-1", "1-2.", "1-0", "0-1", "1-2..3",
                                        "1-999", "a-1", "1-2x", "12345678901234567890"}) {
        const CTarget objTarget = CTarget::Parse(std::string("usb:") + strNumber);
        EXPECT_EQ(objTarget.m_strSerialNumber, strNumber);
        EXPECT_EQ(objTarget.m_iBus, 0) << strNumber;
        EXPECT_TRUE(objTarget.m_iPorts.empty()) << strNumber;
    }
}

TEST(CTarget, WhatIsNoPrinterAtAllIsRefused) {
    for (const char* const strText :
         {"", "printer", "LAN:printer", "usb2", "usb:", "usb:a b", "tcp:printer"}) {
        EXPECT_NE(Refused(strText).m_strHint, "") << strText;
    }
}

TEST(CTarget, IsMeantByItsBeginning) {
    for (const char* const strText : {"lan:", "lan:x", "com:x", "usb", "usb:x"}) {
        EXPECT_TRUE(CTarget::IsMeant(strText)) << strText;
    }
    for (const char* const strText : {"", "lan", "com", "usb2", "shop.dt1", "./usb", "defaults"}) {
        EXPECT_FALSE(CTarget::IsMeant(strText)) << strText;
    }
}
