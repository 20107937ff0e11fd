#include "simulator/CPrinter.h"

#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/MBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using MCommandKind::Kind;

std::string StatusOf(const std::string& p_strAnswer) {
    return p_strAnswer.substr(MAnswer::StatusCodePosition, 2);
}

/// A value of the item's width that is valid on the wire and is not the default.
std::string OtherValue(const CItem& p_objItem, std::size_t p_iSeed) {
    const auto iWidth = static_cast<std::size_t>(p_objItem.m_iLength);
    const std::string strDefault = p_objItem.GetValueString(true);
    if (p_objItem.m_iDataType == ItemDataType::Text) {
        const std::string strText = "Text-of-a-tester-that-is-32-long";
        return iWidth == 1 ? (strDefault == "+" ? "-" : "+") : strText.substr(0, iWidth);
    }
    std::string strDigits(iWidth, '0');
    do {
        const char cDigit = static_cast<char>('1' + p_iSeed++ % 9);
        strDigits.back() = cDigit;
        strDigits.front() = cDigit;
    } while (strDigits == strDefault);
    return strDigits;
}

std::map<std::string, std::string> Fields(const CItemManager& p_objItems) {
    std::map<std::string, std::string> strFields;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        strFields[std::string(objRow.m_strName)] = (p_objItems.*objRow.m_objSlot)->GetValueString();
    }
    return strFields;
}

void ChangeAll(const CItemManager& p_objItems) {
    std::size_t iSeed = 0;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        CItem& objItem = *(p_objItems.*objRow.m_objSlot);
        objItem.SetValue(OtherValue(objItem, iSeed++));
    }
}

/// Every set command with the values of p_objItems.
std::vector<std::string> SetCommands(const CItemManager& p_objItems) {
    return {MCommand::MakeParameterSetCommand(p_objItems, MCommand::SetParameter),
            MCommand::MakeParameterSetCommand(p_objItems, MCommand::SetAdjustment),
            MCommand::MakeAddressCommand(p_objItems, MCommand::IpAddress),
            MCommand::MakeAddressCommand(p_objItems, MCommand::Gateway),
            MCommand::MakeAddressCommand(p_objItems, MCommand::SubnetMask),
            MCommand::MakeSocketPortCommand(p_objItems),
            MCommand::MakeDhcpCommand(p_objItems)};
}

void ReadAll(CPrinter& p_objPrinter, const CItemManager& p_objInto) {
    for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
        const std::string strAnswer =
            p_objPrinter.Handle(MCommand::ReadRequest(iGroup)).m_strAnswer;
        ASSERT_TRUE(MAnswer::DistributeAnswer(p_objInto, MBytes::Of(strAnswer), iGroup));
    }
}

}  // namespace

TEST(PrinterAnswerTest, SettingsStandInTheFrameOfTheirGroupAtTheirExactLength) {
    CPrinter objPrinter;
    for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
        const CPrinter::Reply objReply = objPrinter.Handle(MCommand::ReadRequest(iGroup));
        EXPECT_EQ(objReply.m_strAnswer, MGolden::Answer(iGroup));
        EXPECT_EQ(objReply.m_strAnswer.size(),
                  static_cast<std::size_t>(MAnswer::ReceiveLength(iGroup) / 2));
        EXPECT_EQ(objReply.m_strNote, "settings of group " + std::to_string(iGroup));
    }
}

TEST(PrinterAnswerTest, ATextTooLongForItsFieldIsCutToTheFieldsWidth) {
    const CPrinter objPrinter;
    objPrinter.Items().m_objDhcpClientHost->SetValue(std::string(40, 'h'));
    const std::string strAnswer = objPrinter.SettingsAnswer(MAnswer::Lan);
    EXPECT_EQ(strAnswer.size(), 96U);
    EXPECT_TRUE(strAnswer.ends_with("F" + std::string(16, 'h') + "|}"));
}

TEST(PrinterAnswerTest, AStatusAnswerHasItsCodeInPlaceAndNoByteThatALinkWouldSwallow) {
    const std::string strAnswer = CPrinter::StatusAnswer("14");
    ASSERT_EQ(strAnswer.size(), static_cast<std::size_t>(MAnswer::StatusLength));
    EXPECT_EQ(strAnswer.front(), '\x01');
    EXPECT_EQ(StatusOf(strAnswer), "14");
    EXPECT_TRUE(std::all_of(strAnswer.begin() + 1, strAnswer.end(), [](char p_c) {
        const auto iCode = static_cast<unsigned char>(p_c);
        return iCode < 0x80 && iCode != 0x01 && iCode != 0x11 && iCode != 0x13 && p_c != '{';
    }));
}

TEST(PrinterReadAfterWriteTest, ShowsEveryWrittenItemAndLeavesTheOthersAtTheirDefaults) {
    const CItemManager objWritten;
    ChangeAll(objWritten);
    CPrinter objPrinter;
    for (const std::string& strCommand : SetCommands(objWritten)) {
        EXPECT_EQ(StatusOf(objPrinter.Handle(strCommand).m_strAnswer), "00") << strCommand;
    }
    const CItemManager objRead;
    ReadAll(objPrinter, objRead);

    std::set<std::string> strSet;
    for (const MGolden::Texts& strCommands : {MGolden::SetCommands(), MGolden::LanSetCommands()}) {
        for (const std::string& strCommand : strCommands) {
            for (const MGolden::Slot objSlot : MGolden::Carried(strCommand)) {
                strSet.insert(MGolden::Of(objSlot).m_strName);
            }
        }
    }
    const auto strWritten = Fields(objWritten);
    const auto strDefaults = Fields(CItemManager());
    auto strRead = Fields(objRead);
    // The stop bit is in no answer: only the printer itself can tell.
    strRead["m_objStopBit"] = objPrinter.Items().m_objStopBit->GetValueString();
    ASSERT_EQ(strRead.size(), MGolden::Items().size());
    for (const auto& [strName, strField] : strRead) {
        const bool bSet = strSet.contains(strName);
        EXPECT_EQ(strField, bSet ? strWritten.at(strName) : strDefaults.at(strName)) << strName;
    }
}

TEST(PrinterReadAfterWriteTest, ShowsEveryFontCodeAsItWasSet) {
    for (int iCode = 0; iCode <= 0xF; ++iCode) {
        const CItemManager objTool;
        objTool.m_objFontCode->m_vValue = iCode;
        CPrinter objPrinter;
        objPrinter.Handle(MCommand::MakeParameterSetCommand(objTool, MCommand::SetParameter));
        const CItemManager objRead;
        ReadAll(objPrinter, objRead);
        EXPECT_EQ(objRead.m_objFontCode->GetValue(), CItemValue(iCode));
    }
}

TEST(PrinterReadAfterWriteTest, FillBytesOfAHostNameAreDroppedWhereverTheyStand) {
    CPrinter objPrinter;
    const std::string strId(32, '0');
    objPrinter.Handle("{IH;1," + strId +
                      ",a\xFF"
                      "b" +
                      std::string(13, '\xFF') + "|}");
    EXPECT_EQ(objPrinter.Items().m_objDhcpClientHost->GetValueString(), "ab");
    objPrinter.Handle("{IH;1," + strId + "," + std::string(16, '\xFF') + "|}");
    EXPECT_EQ(objPrinter.Items().m_objDhcpClientHost->GetValueString(), "");
}

TEST(PrinterRefusalTest, AWrongCommandIsAnsweredWithCommandErrorAndChangesNothing) {
    CPrinter objPrinter;
    objPrinter.SetStatus("14");
    ChangeAll(objPrinter.Items());
    const auto strBefore = Fields(objPrinter.Items());
    const CItemManager objDefaults;
    for (const std::string& strGood : SetCommands(objDefaults)) {
        const std::string strBody = strGood.substr(0, strGood.size() - 2);
        std::string strLastField = strGood;
        strLastField[strGood.size() - 3] = '\x07';
        for (const std::string& strWrong :
             {strBody.substr(0, strBody.size() - 1) + "|}", strBody + "0|}", strLastField}) {
            const CPrinter::Reply objReply = objPrinter.Handle(strWrong);
            EXPECT_EQ(objReply.m_strAnswer, CPrinter::StatusAnswer("06")) << strWrong;
            EXPECT_EQ(objReply.m_strNote, "status 06 (Command Error)");
            EXPECT_EQ(Fields(objPrinter.Items()), strBefore) << strWrong;
        }
    }
    EXPECT_EQ(StatusOf(objPrinter.Handle("{QX|}").m_strAnswer), "06");
    EXPECT_EQ(StatusOf(objPrinter.Handle("").m_strAnswer), "06");
}

TEST(PrinterRamClearTest, PutsAllSettingsBackOnlyWhenTheParametersAreCleared) {
    const auto strDefaults = Fields(CItemManager());
    struct Row {
        const char* m_strCommand;
        bool m_bClears;
    };
    for (const Row& objRow :
         {Row{"{Z4;0|}", true}, Row{"{Z4;02|}", true}, Row{"{Z4;1|}", false}, Row{"{Z4;2|}", false},
          Row{"{Z4;04|}", false}, Row{"{Z6;0|}", false}}) {
        CPrinter objPrinter;
        ChangeAll(objPrinter.Items());
        const auto strChanged = Fields(objPrinter.Items());
        objPrinter.Handle(objRow.m_strCommand);
        EXPECT_EQ(Fields(objPrinter.Items()), objRow.m_bClears ? strDefaults : strChanged)
            << objRow.m_strCommand;
    }
}

TEST(PrinterStatusTest, IsGivenInAnswerToEverythingThatIsAccepted) {
    CPrinter objPrinter;
    objPrinter.SetStatus("15");
    for (const char* strCommand :
         {"{WS|}", "{HD001,A|}", "{Z10|}", "{Z3;007600730105700010000|}", "{Z4;1|}", "{Z6;0|}",
          "{Z6;1|}", "{Z6;01|}", "{Z6;11|}", "{WT;1000,1|}", "{IS;1,08000|}"}) {
        const CPrinter::Reply objReply = objPrinter.Handle(strCommand);
        EXPECT_EQ(objReply.m_strAnswer, CPrinter::StatusAnswer("15")) << strCommand;
        EXPECT_EQ(objReply.m_strNote, "status 15 (Head Open Error)");
    }
}

TEST(PrinterStatusTest, NamesCodesWithoutATextAndUnknownOnes) {
    CPrinter objPrinter;
    objPrinter.SetStatus("40");
    EXPECT_EQ(objPrinter.Handle("{WS|}").m_strNote, "status 40");
    objPrinter.SetStatus("03");
    EXPECT_EQ(objPrinter.Handle("{WS|}").m_strNote, "status 03 (a code the tool does not know)");
}

TEST(PrinterStatusTest, MustBeTwoPrintableCharacters) {
    CPrinter objPrinter;
    for (const char* strWrong : {"", "1", "123", "\t1", "1\x80"}) {
        EXPECT_THROW(objPrinter.SetStatus(strWrong), std::invalid_argument) << strWrong;
    }
    EXPECT_EQ(objPrinter.Handle("{WS|}").m_strAnswer, CPrinter::StatusAnswer("00"));
}

TEST(PrinterCountTest, CountsEachKindAcceptedAndRefusedApart) {
    CPrinter objPrinter;
    const CItemManager objDefaults;
    EXPECT_EQ(objPrinter.DescribeCounts(), "");
    for (const std::string& strCommand : SetCommands(objDefaults)) {
        objPrinter.Handle(strCommand);
    }
    for (const char* strCommand : {"{WS|}", "{WS|}", "{Z5;0|}", "{Z5;9|}", "{Z5;4|}", "{HD001,A|}",
                                   "{Z4;1|}", "{WT;1000,2|}", "{Z6;01|}", "{Z6;11|}",
                                   "{Z3;007600730105700010000|}", "{Z11|}", "{A|}"}) {
        objPrinter.Handle(strCommand);
    }
    EXPECT_EQ(objPrinter.Commands(Kind::ReadSettings), (CPrinter::Count{2, 1}));
    EXPECT_EQ(objPrinter.Commands(Kind::Unknown), (CPrinter::Count{0, 1}));
    EXPECT_EQ(objPrinter.DescribeCounts(), "status request: 2\n"
                                           "read settings: 3, refused 1\n"
                                           "set parameters: 1\n"
                                           "set adjustments: 1\n"
                                           "set IP address: 1\n"
                                           "set gateway: 1\n"
                                           "set subnet mask: 1\n"
                                           "set socket port: 1\n"
                                           "set DHCP: 1\n"
                                           "head check: 1\n"
                                           "RAM clear: 1\n"
                                           "threshold calibration: 1\n"
                                           "sensor adjustment: 2\n"
                                           "test print: 1\n"
                                           "diagnostic print: 1\n"
                                           "unknown command: 1, refused 1\n");
}
