#include "tests/ui/CLineFixture.h"

#include <cerrno>

// What the page in front holds, as the line at the foot of the window says it.

namespace {

using Connect = CFakeTcpClient::ConnectResult;

constexpr int Parameter = 0;
constexpr int Maintenance = 1;
constexpr int Network = 2;

class FmMainPageTextTest : public CLineFixture {
protected:
    void ExpectTimeOut() {
        m_objBoxes.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }

    /// The answers of a printer that keeps silent from command number p_iSilent on, counted from 1.
    void AnswerUntil(int p_iSilent) {
        Answer([this, p_iSilent](const std::string& p_strCommand) -> std::optional<std::string> {
            return ++m_iCommands < p_iSilent ? Behave(p_strCommand) : std::nullopt;
        });
    }

    void Load(const std::string& p_strPath, const std::string& p_strContent, const char* p_strBox) {
        m_objFileStore.m_strFiles[p_strPath] = p_strContent;
        m_objFileDialog.Choose(p_strPath);
        m_objBoxes.Expect(p_strBox);
        m_objWindow.Click(p_strPath.ends_with("dt1") ? "btnLoad" : "btnLanLoad");
    }

    int m_iCommands = 0;
};

TEST_F(FmMainPageTextTest, CountsWhatIsChangedFromTheDefaults) {
    m_objWindow.Type("SeFeedAdj", "4.5");
    EXPECT_EQ(Page(), "1 field changed, never read");
    m_objWindow.Choose("cmbSpeed", 0);
    EXPECT_EQ(Page(), "2 fields changed, never read");
    ShowTab(Network);
    EXPECT_EQ(Page(), "defaults, never read");
    ShowTab(Maintenance);
    EXPECT_EQ(Page(), "");
    ShowTab(Parameter);
    EXPECT_EQ(Page(), "2 fields changed, never read");
}

TEST_F(FmMainPageTextTest, CountsWhatIsChangedSinceTheReading) {
    for (const int iInterface : {Com, Lan, Usb}) {
        SCOPED_TRACE(iInterface);
        Use(iInterface);
        m_objWindow.Click("btnRead");
        EXPECT_EQ(Page(), "as read from the printer");
        m_objWindow.Type("SeFeedAdj", "4.5");
        EXPECT_EQ(Page(), "1 field changed since read");
        m_objWindow.Choose("cmbSpeed", 0);
        m_objWindow.Choose("cmbParity", 0);
        EXPECT_EQ(Page(), "3 fields changed since read");
    }
    ShowTab(Network);
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Page(), "as read from the printer");
}

TEST_F(FmMainPageTextTest, WhatWasSentIsNotReadBack) {
    for (const int iInterface : {Com, Lan, Usb}) {
        SCOPED_TRACE(iInterface);
        Use(iInterface);
        m_objWindow.Click("btnSet");
        EXPECT_EQ(Page(), "sent, not read back");
        m_objWindow.Type("SeFeedAdj", "4.5");
        EXPECT_EQ(Page(), "sent, then changed");
        m_objWindow.Type("SeFeedAdj", "0.0");
        EXPECT_EQ(Page(), "sent, not read back");
    }
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(Page(), "sent, not read back");
}

TEST_F(FmMainPageTextTest, WhatComesFromAFileNamesIt) {
    Load("/home/anna/shop.dt1", MGolden::File(MGolden::SetCommands()), "Normal termination");
    EXPECT_EQ(Page(), "from file shop.dt1");
    m_objWindow.Type("SeFeedAdj", "4.5");
    EXPECT_EQ(Page(), "from file shop.dt1, then changed");
    ShowTab(Network);
    Load("/home/anna/net.dt2", MGolden::File(MGolden::LanSetCommands()), "Normal termination");
    EXPECT_EQ(Page(), "from file net.dt2");
    m_objFileDialog.CancelAfterTyping("/home/anna/other.dt2");
    m_objWindow.Click("btnLanLoad");
    EXPECT_EQ(Page(), "from file net.dt2");
}

TEST_F(FmMainPageTextTest, AFileThatIsNoneEndsTheLoading) {
    Load("/home/anna/shop.dt1", "no settings\r\n", "Abnormal termination");
    EXPECT_EQ(Page(), "LOAD ended in file shop.dt1 (defaults, never read)");
}

TEST_F(FmMainPageTextTest, AReadingThatEndsEarlySaysWhereAndWhy) {
    Use(Lan);
    AnswerUntil(2);
    ExpectTimeOut();
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Page(), "READ ended at group 1: no answer (defaults, never read)");
    Answer(Behave);
    After(1100, [&] { EXPECT_EQ(Page(), "defaults, never read") << "the next one has begun"; });
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Page(), "as read from the printer");
}

TEST_F(FmMainPageTextTest, AClosedPortEndsEverythingWithoutABox) {
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Page(), "READ ended at group 0: the port is closed (defaults, never read)");
    m_objWindow.Click("btnSet");
    EXPECT_EQ(Page(), "SET ended at 1 of 2: the port is closed (defaults, never read)");
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Page(), "READ ended at group 3: the port is closed (defaults, never read)");
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(Page(), "SET ended at 1 of 5: the port is closed (defaults, never read)");
    m_objWindow.Click("btnReflect");
    EXPECT_EQ(Page(), "sensor adjustment, step 1 ended: the port is closed");
}

TEST_F(FmMainPageTextTest, ASilentSerialPrinterIsNotTakenForRead) {
    Use(Com);
    Answer(CScriptedPrinter::KeepSilent);
    m_objWindow.Type("SeFeedAdj", "4.5");
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Page(), "READ: no answer for groups 0, 1 and 4 (defaults, never read)");
    AnswerUntil(3);
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Page(), "READ: no answer for group 4 (defaults, never read)");
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Page(), "READ: no answer for group 3 (defaults, never read)");
}

TEST_F(FmMainPageTextTest, AValueThatThePageCannotShowIsNamed) {
    Use(Lan);
    Answer([](const std::string& p_strCommand) -> std::optional<std::string> {
        if (p_strCommand == "{Z5;4|}") {
            return MGolden::With(MGolden::Answer(4), {{"CommunicationSpeed", "9"}});
        }
        if (p_strCommand == "{Z5;3|}") {
            return MGolden::With(MGolden::Answer(3), {{"DhcpSetting", "7"}});
        }
        return Behave(p_strCommand);
    });
    m_objBoxes.Expect("Error RefreshParameterSettingItem");
    m_objWindow.Click("btnRead");
    EXPECT_EQ(Page(), "READ ended: SPEED has no entry for 9 (defaults, never read)");
    m_objWindow.Click("btnLanRead");  // has no box
    EXPECT_EQ(Page().substr(0, 36), "READ ended: DHCP has no entry for 7 ");
}

TEST_F(FmMainPageTextTest, SettingsInPlaceOfAnAnswerEndASetOnUsb) {
    Use(Usb);
    Answer([](const std::string&) { return std::optional<std::string>(MGolden::Answer(1)); });
    m_objWindow.Click("btnSet");
    EXPECT_EQ(m_objLibrary.m_strSent.size(), 1U);
    EXPECT_EQ(Page(),
              "SET ended at 1 of 2: settings came in place of its answer (defaults, never read)");
}

TEST_F(FmMainPageTextTest, ANameThatIsTooLongIsSaidToSendNothing) {
    Use(Com);
    m_objWindow.Type("txtDhcpName", "longer than sixteen characters");
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(m_objPort.Sent(), "");
    EXPECT_EQ(Page().substr(0, 68),
              "SET has sent nothing: a text is longer than the printer takes (1 fie");
}

TEST_F(FmMainPageTextTest, AServiceFunctionThatFailsSaysWhy) {
    Use(Lan);
    ShowTab(Maintenance);
    for (const char* const strButton : {"btnReflect", "btnTrans", "btnPaperEnd"}) {
        m_objWindow.Click(strButton);
        EXPECT_EQ(Page(), "") << "nothing has failed";
    }
    m_objSocket.PeerCloses();
    m_objWindow.Click("btnTrans");  // without a word
    EXPECT_EQ(Page(), "sensor adjustment, step 2 ended: not sent");
    m_objWindow.Click("btnPaperEnd");
    EXPECT_EQ(Page(), "sensor adjustment, step 3 ended: not sent");
    m_objBoxes.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    m_objWindow.Click("btnRamClear");
    EXPECT_EQ(Page(), "RAM clear ended: not sent");
    SetUpLink();
    After(50, [&] { EXPECT_EQ(Page(), "") << "the next one has begun"; });
    m_objPrinter.m_iDelay = 100;
    m_objWindow.Click("btnRamClear");
    EXPECT_EQ(Page(), "");
}

TEST_F(FmMainPageTextTest, OnUsbNoAnswerToAServiceFunctionIsNoFailure) {
    Use(Usb);
    Answer(CScriptedPrinter::KeepSilent);
    m_objWindow.Click("btnReflect");
    EXPECT_EQ(Page(), "");
    m_objLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
    m_objLibrary.m_iNotReadyNumber = ENODEV;
    m_objWindow.Click("btnReflect");
    EXPECT_EQ(Page(), "sensor adjustment, step 1 ended: no printer");
}

// SET would move the printer away.

class FmMainMoveWarningTest : public FmMainPageTextTest {
protected:
    static constexpr const char* Ends = ": this connection ends";

    void SetUp() override {
        FmMainPageTextTest::SetUp();
        ShowTab(Network);
    }

    [[nodiscard]] bool Warns() { return Page().find(Ends) != std::string::npos; }
};

TEST_F(FmMainMoveWarningTest, AnotherAddressIsToldBeforehand) {
    Use(Lan);
    EXPECT_EQ(Page(), "defaults, never read") << "its own address";
    m_objWindow.Type("SeIpAddress4", "77");
    EXPECT_EQ(Page(), "SET will move the printer from 192.168.10.20 to 192.168.10.77: this "
                      "connection ends (1 field changed, never read)");
    m_objWindow.Type("SeIpAddress4", "20");
    EXPECT_FALSE(Warns());
}

TEST_F(FmMainMoveWarningTest, AnotherPortAndNoneIsToldBeforehand) {
    Use(Lan);
    m_objWindow.Type("SeSocetPort", "9100");
    EXPECT_EQ(Page(), "SET will move the printer from port 8000 to port 9100: this connection ends "
                      "(1 field changed, never read)");
    m_objWindow.Choose("cmbPort", 0);
    EXPECT_EQ(Page(), "SET will switch the printer's socket off: this connection ends (2 fields "
                      "changed, never read)");
}

TEST_F(FmMainMoveWarningTest, OnlyWhileTheToolTalksOverThatConnection) {
    m_objWindow.Type("SeIpAddress4", "77");
    EXPECT_FALSE(Warns()) << "not connected";
    Use(Lan);
    EXPECT_TRUE(Warns());
    ShowTab(Parameter);
    EXPECT_FALSE(Warns()) << "the tab in front is another";
    ShowTab(Network);
    EXPECT_TRUE(Warns());
    Choose(Usb);
    EXPECT_FALSE(Warns());
    Choose(Lan);
    EXPECT_TRUE(Warns());
    m_objSocket.PeerCloses();
    EXPECT_FALSE(Warns());
}

TEST_F(FmMainMoveWarningTest, WhatThePrinterItselfHasAnsweredMovesNothing) {
    Use(Lan);
    Answer([](const std::string& p_strCommand) -> std::optional<std::string> {
        // Behind a router the tool knows it by another address.
        return p_strCommand == "{Z5;3|}"
                   ? MGolden::With(MGolden::Answer(3), {{"IpAddress4", "099"}})
                   : *Behave(p_strCommand);
    });
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Page(), "as read from the printer");
    m_objWindow.Type("SeIpAddress4", "77");
    EXPECT_TRUE(Warns());
    m_objWindow.Type("SeIpAddress4", "99");
    EXPECT_FALSE(Warns());
    SetUpLink();  // perhaps another printer
    ShowTab(Network);
    EXPECT_TRUE(Warns());
}

TEST_F(FmMainMoveWarningTest, WhatWasSentHasMovedItAlready) {
    Use(Lan);
    m_objWindow.Type("SeIpAddress4", "77");
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(Page(), "sent, not read back");
    m_objWindow.Type("SeIpAddress4", "78");
    EXPECT_TRUE(Warns());
}

}  // namespace
