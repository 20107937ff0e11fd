#include "protocol/MAnswer.h"

#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace {

struct Field {
    MGolden::Slot m_objSlot;
    std::string m_strField;
    CItemValue m_vStored;
};

struct Answer {
    std::int16_t m_iGroup;
    std::size_t m_iCharacters;
    std::vector<Field> m_objFields;
};

constexpr std::int16_t Groups = 5;

/// What a printer with its defaults answers, in bytes.
std::size_t LengthOf(std::int16_t p_iGroup) {
    return std::string_view(MGolden::Answer(p_iGroup)).size();
}

/// A field of its own for every item of each group, so that no two can be mistaken for each other.
std::vector<Answer> MakeAnswers() {
    std::vector<Answer> objAnswers;
    for (std::int16_t iGroup = 0; iGroup < Groups; ++iGroup) {
        objAnswers.push_back({iGroup, LengthOf(iGroup) - 4, {}});
        for (const MGolden::Answered& objField : MGolden::Answers(iGroup)) {
            const CItemValue vStored =
                objField.m_iStored < 0 ? CItemValue(objField.m_strField) : objField.m_iStored;
            objAnswers.back().m_objFields.push_back(
                {objField.m_objSlot, objField.m_strField, vStored});
        }
    }
    return objAnswers;
}

const std::vector<Answer> Answers = MakeAnswers();

std::vector<std::uint8_t> Bytes(const std::string& p_strText) {
    return {p_strText.begin(), p_strText.end()};
}

std::string Fields(const Answer& p_objAnswer) {
    return std::accumulate(p_objAnswer.m_objFields.begin(), p_objAnswer.m_objFields.end(),
                           std::string(),
                           [](const std::string& p_strText, const Field& p_objField) {
                               return p_strText + p_objField.m_strField;
                           });
}

/// The answer as the serial port and TCP carry it.
std::vector<std::uint8_t> Frame(const Answer& p_objAnswer) {
    return Bytes("{" + std::to_string(p_objAnswer.m_iGroup) + Fields(p_objAnswer) + "|}");
}

std::vector<CItemValue> Values(const CItemManager& p_objItemManager) {
    std::vector<CItemValue> objValues;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        objValues.push_back((p_objItemManager.*objRow.m_objSlot)->m_vValue);
    }
    return objValues;
}

// The answers of the groups 0 to 4 in bytes.
const std::vector<std::size_t> AnswerLengths{LengthOf(0), LengthOf(1), LengthOf(2), LengthOf(3),
                                             LengthOf(4)};
const std::size_t LongestAnswer = *std::ranges::max_element(AnswerLengths);

/// p_iSize bytes of an answer with the first "|}" so that p_iEnd bytes end with it; 0 for none.
std::vector<std::uint8_t> Part(std::size_t p_iSize, std::size_t p_iEnd) {
    std::vector<std::uint8_t> objPart(p_iSize, '7');
    objPart[0] = '{';
    if (p_iEnd != 0) {
        objPart[p_iEnd - 2] = '|';
        objPart[p_iEnd - 1] = '}';
    }
    return objPart;
}

bool IsAnswerLength(std::size_t p_iLength) {
    return std::ranges::count(AnswerLengths, p_iLength) != 0;
}

/// An answer of group p_iGroup with nothing but ones in its fields.
std::vector<std::uint8_t> Ones(std::int16_t p_iGroup) {
    const std::string strOnes(LengthOf(p_iGroup) - 4, '1');
    return Bytes("{" + std::to_string(p_iGroup) + strOnes + "|}");
}

/// A parameter answer of the given font code byte.
std::vector<std::uint8_t> ParameterAnswer(char p_cFontCode) {
    return Bytes(MGolden::With(MGolden::Answer(1), {{"FontCode", {&p_cFontCode, 1}}}));
}

}  // namespace

TEST(MAnswer, KnowsTheMarksOfItsFrames) {
    EXPECT_EQ(MAnswer::StatusHead, 0x01);
    EXPECT_EQ(MAnswer::StatusLength, 13);
    EXPECT_EQ(MAnswer::StatusCodePosition, 2U);
    EXPECT_EQ(MAnswer::SettingsHead, '{');
    EXPECT_EQ(MAnswer::FieldsPosition, 2U);
}

TEST(MAnswer, AsksForTheReceiveLengthOfEachGroup) {
    const struct {
        std::int16_t m_iGroup;
        std::int16_t m_iLength;
    } arrCases[] = {
        {-1, 7}, {5, 0}, {-2, 0}, {6, 0}, {100, 0}, {32767, 0}, {-32768, 0},
    };
    for (const auto& objCase : arrCases) {
        EXPECT_EQ(MAnswer::ReceiveLength(objCase.m_iGroup), objCase.m_iLength) << objCase.m_iGroup;
    }
    for (std::int16_t iGroup = 0; iGroup < Groups; ++iGroup) {
        EXPECT_EQ(MAnswer::ReceiveLength(iGroup), 2 * LengthOf(iGroup)) << iGroup;
    }
}

TEST(MAnswer, HasAFrameOfHalfTheReceiveLengthForEveryGroup) {
    for (const Answer& objAnswer : Answers) {
        SCOPED_TRACE(objAnswer.m_iGroup);
        const auto iFrame =
            static_cast<std::size_t>(MAnswer::ReceiveLength(objAnswer.m_iGroup) / 2);
        EXPECT_EQ(Frame(objAnswer).size(), iFrame);
    }
}

TEST(MAnswer, StoresEveryFieldInItsItemAndTouchesNoOther) {
    for (const Answer& objAnswer : Answers) {
        SCOPED_TRACE(objAnswer.m_iGroup);
        const CItemManager objItemManager;
        const CItemManager objExpected;
        for (const Field& objField : objAnswer.m_objFields) {
            (objExpected.*objField.m_objSlot)->m_vValue = objField.m_vStored;
        }

        EXPECT_TRUE(
            MAnswer::DistributeAnswer(objItemManager, Frame(objAnswer), objAnswer.m_iGroup));

        EXPECT_EQ(Values(objItemManager), Values(objExpected));
        for (const Field& objField : objAnswer.m_objFields) {
            EXPECT_EQ((objItemManager.*objField.m_objSlot)->m_vValue, objField.m_vStored)
                << objField.m_strField;
        }
    }
}

TEST(MAnswer, LeavesDefaultsAndFixedItemsAlone) {
    const CItemManager objItemManager;
    MAnswer::DistributeAnswer(objItemManager, Frame(Answers[0]), 0);

    EXPECT_EQ(objItemManager.m_objRibbonMotorDirection_F->GetValueString(), "-");
    EXPECT_EQ(objItemManager.m_objRibbonMotorDirection_B->GetValueString(), "-");
    EXPECT_EQ(objItemManager.m_objFeedAdjustment->GetValueString(true), "000");
}

TEST(MAnswer, LooksAtNeitherHeaderNorWhatFollowsTheFields) {
    const CItemManager objItemManager;
    EXPECT_TRUE(MAnswer::DistributeAnswer(objItemManager, Bytes("??41526374"), 2));
    EXPECT_EQ(objItemManager.m_objThermalHeadSensor->GetValue(), CItemValue("41"));
    EXPECT_EQ(objItemManager.m_objTransmissiveSensor->GetValue(), CItemValue("74"));

    EXPECT_TRUE(MAnswer::DistributeAnswer(objItemManager, Bytes("\x02?11223344 and more"), 2));
    EXPECT_EQ(objItemManager.m_objThermalHeadSensor->GetValue(), CItemValue("11"));
    EXPECT_EQ(objItemManager.m_objTransmissiveSensor->GetValue(), CItemValue("44"));
}

TEST(MAnswer, KeepsTheBlanksOfATextField) {
    const CItemManager objItemManager;
    const std::string strHost = "host            ";
    ASSERT_EQ(strHost.size(), 16U);

    const std::string strAnswer =
        MGolden::With(MGolden::Answer(3), {{"DhcpClientId", "0123456789ABCDEF0123456789ABCDEF"},
                                           {"DhcpClientHost", strHost}});
    EXPECT_TRUE(MAnswer::DistributeAnswer(objItemManager, Bytes(strAnswer), 3));

    EXPECT_EQ(objItemManager.m_objDhcpClientId->GetValue(),
              CItemValue("0123456789ABCDEF0123456789ABCDEF"));
    EXPECT_EQ(objItemManager.m_objDhcpClientHost->GetValueString(), strHost);
}

TEST(MAnswer, KeepsEveryByteOfAField) {
    for (int iByte = 0; iByte <= 0xFF; ++iByte) {
        SCOPED_TRACE(iByte);
        const CItemManager objItemManager;
        std::vector<std::uint8_t> objAnswer = Frame(Answers[2]);
        objAnswer[2] = static_cast<std::uint8_t>(iByte);

        EXPECT_TRUE(MAnswer::DistributeAnswer(objItemManager, objAnswer, 2));

        const std::string strExpected{static_cast<char>(iByte), '1'};
        EXPECT_EQ(objItemManager.m_objThermalHeadSensor->GetValue(), CItemValue(strExpected));
    }
}

TEST(MAnswer, ReadsTheFontCodeInTheToolsNumbering) {
    const struct {
        char m_cFontCode;
        int m_iStored;
    } arrCases[] = {
        {'0', 0},  {'1', 3},  {'2', 1},  {'3', 2},  {'4', 4},  {'5', 5},  {'6', 6},
        {'7', 7},  {'8', 8},  {'9', 9},  {'A', 10}, {'B', 11}, {'C', 12}, {'D', 13},
        {'E', 14}, {'F', 15}, {'a', 10}, {' ', 0},  {'?', 0},
    };
    for (const auto& objCase : arrCases) {
        SCOPED_TRACE(objCase.m_cFontCode);
        const CItemManager objItemManager;
        EXPECT_TRUE(
            MAnswer::DistributeAnswer(objItemManager, ParameterAnswer(objCase.m_cFontCode), 1));
        EXPECT_EQ(objItemManager.m_objFontCode->GetValue(), CItemValue(objCase.m_iStored));
    }
}

TEST(MAnswer, WhoJudgesFieldsGetsAFontCodeThatIsNoneAsItCame) {
    for (const auto& [cFontCode, strStored] :
         {std::pair{'1', "3"}, {'2', "1"}, {'a', "A"}, {'F', "F"}, {'?', "?"}, {' ', " "}}) {
        SCOPED_TRACE(cFontCode);
        CItemManager objItemManager;
        objItemManager.m_objFontCode = std::make_shared<CItem>(*objItemManager.m_objFontCode);
        objItemManager.m_objFontCode->m_iDataType = ItemDataType::Text;
        EXPECT_TRUE(MAnswer::DistributeAnswer(objItemManager, ParameterAnswer(cFontCode), 1));
        EXPECT_EQ(objItemManager.m_objFontCode->GetValue(), CItemValue(std::string(strStored)));
    }
}

TEST(MAnswer, MapsOnlyTheFontCode) {
    const CItemManager objItemManager;
    EXPECT_TRUE(MAnswer::DistributeAnswer(objItemManager, Ones(1), 1));

    EXPECT_EQ(objItemManager.m_objFontCode->GetValue(), CItemValue(3));
    EXPECT_EQ(objItemManager.m_objZeroStyle->GetValue(), CItemValue("1"));
    EXPECT_EQ(objItemManager.m_objPrintPosCorrectionValue->GetValue(), CItemValue("111"));
    EXPECT_EQ(objItemManager.m_objEuroCode->GetValue(), CItemValue(0x11));

    EXPECT_TRUE(MAnswer::DistributeAnswer(objItemManager, Ones(4), 4));
    EXPECT_EQ(objItemManager.m_objAutoForwardDirection->GetValue(), CItemValue("1"))
        << "the fifth field of another group";
}

TEST(MAnswer, MapsFontCodesBothWays) {
    const std::string strHexDigits = "0123456789ABCDEF";
    for (const char c : strHexDigits) {
        const std::string strCode(1, c);
        const std::string strTool = c == '1' ? "3" : c == '2' ? "1" : c == '3' ? "2" : strCode;
        SCOPED_TRACE(strCode);
        EXPECT_EQ(MAnswer::MapFontCode(strCode, true), strTool);
        EXPECT_EQ(MAnswer::MapFontCode(strTool, false), strCode);
    }
    EXPECT_EQ(MAnswer::MapFontCode("1", false), "2");
    EXPECT_EQ(MAnswer::MapFontCode("2", false), "3");
    EXPECT_EQ(MAnswer::MapFontCode("3", false), "1");
    EXPECT_EQ(MAnswer::MapFontCode(1, true), "3") << "a number is read by its text";
    EXPECT_EQ(MAnswer::MapFontCode(10, true), "10");
    EXPECT_EQ(MAnswer::MapFontCode("b0", true), "B0");
    EXPECT_EQ(MAnswer::MapFontCode("", true), "0");
    EXPECT_EQ(MAnswer::MapFontCode("zz", false), "0");
}

TEST(MAnswer, RefusesAGroupThatDoesNotExistAndChangesNothing) {
    for (const std::int16_t iGroup : std::initializer_list<std::int16_t>{-1, 5, -2, 6, 100}) {
        SCOPED_TRACE(iGroup);
        const CItemManager objItemManager;
        EXPECT_FALSE(
            MAnswer::DistributeAnswer(objItemManager, std::vector<std::uint8_t>(200, '7'), iGroup));
        EXPECT_FALSE(MAnswer::DistributeAnswer(objItemManager, {}, iGroup));
        EXPECT_EQ(Values(objItemManager), Values(CItemManager()));
    }
}

TEST(MAnswer, ThrowsWhenTheAnswerEndsEarlyAndKeepsTheFieldsBefore) {
    for (const Answer& objAnswer : Answers) {
        const std::vector<std::uint8_t> objFrame = Frame(objAnswer);
        for (std::size_t iSize = 0; iSize < 2 + objAnswer.m_iCharacters; ++iSize) {
            SCOPED_TRACE("group " + std::to_string(objAnswer.m_iGroup) + ", bytes " +
                         std::to_string(iSize));
            const CItemManager objExpected;
            std::size_t iEnd = 2;
            for (const Field& objField : objAnswer.m_objFields) {
                iEnd += objField.m_strField.size();
                if (iEnd > iSize) {
                    break;
                }
                (objExpected.*objField.m_objSlot)->m_vValue = objField.m_vStored;
            }
            const CItemManager objItemManager;
            EXPECT_THROW(MAnswer::DistributeAnswer(objItemManager, std::span(objFrame).first(iSize),
                                                   objAnswer.m_iGroup),
                         std::out_of_range);
            EXPECT_EQ(Values(objItemManager), Values(objExpected));
        }
    }
}

TEST(MAnswer, KnowsTheBytesThatBeginAnAnswer) {
    for (int iByte = 0; iByte <= 0xFF; ++iByte) {
        EXPECT_EQ(MAnswer::BeginsAnswer(static_cast<std::uint8_t>(iByte)),
                  iByte == 0x01 || iByte == '{')
            << iByte;
    }
}

TEST(MAnswer, APartEndsWhereItsFirstEndStands) {
    using Frame = MAnswer::Frame;
    for (const std::size_t iLength : AnswerLengths) {
        for (std::size_t iSize = 1; iSize <= LongestAnswer + 1; ++iSize) {
            SCOPED_TRACE("of " + std::to_string(iLength) + ", bytes " + std::to_string(iSize));
            const Frame iEnough = iSize < iLength ? Frame::Open : Frame::Whole;
            const Frame iNone =
                iSize >= iLength && iSize < LongestAnswer ? Frame::Doubtful : iEnough;
            EXPECT_EQ(MAnswer::JudgePart(Part(iSize, 0), iLength), iNone);
            for (std::size_t iEnd = 3; iEnd <= iSize; ++iEnd) {
                SCOPED_TRACE(iEnd);
                const bool bForeign = iEnd != iLength && IsAnswerLength(iEnd);
                EXPECT_EQ(MAnswer::JudgePart(Part(iSize, iEnd), iLength),
                          bForeign ? Frame::Foreign : iEnough);
            }
        }
    }
}

TEST(MAnswer, OnlyTheFirstEndOfAPartCounts) {
    const std::size_t iLonger = LengthOf(0);
    const std::size_t iShorter = LengthOf(1);
    std::vector<std::uint8_t> objPart = Part(iLonger, iLonger);
    objPart[iShorter - 2] = '|';
    objPart[iShorter - 1] = '}';
    EXPECT_EQ(MAnswer::JudgePart(objPart, iShorter), MAnswer::Frame::Whole);
    EXPECT_EQ(MAnswer::JudgePart(objPart, iLonger), MAnswer::Frame::Foreign);
    objPart[5] = '|';
    objPart[6] = '}';
    EXPECT_EQ(MAnswer::JudgePart(objPart, iLonger), MAnswer::Frame::Whole);
}

TEST(MAnswer, AnAnswerOfNoGroupIsJudgedByItsLengthAlone) {
    using Frame = MAnswer::Frame;
    for (const std::size_t iLength : {0U, 3U, 6U, 26U, 97U}) {
        for (const std::size_t iEnd : {0U, 12U, 25U}) {
            for (std::size_t iSize = 25; iSize < 100; ++iSize) {
                const Frame iExpected = iSize < iLength ? Frame::Open : Frame::Whole;
                EXPECT_EQ(MAnswer::JudgePart(Part(iSize, iEnd), iLength), iExpected);
                EXPECT_EQ(MAnswer::JudgeBlock(Part(iSize, iEnd), iLength, true), iExpected);
            }
        }
    }
    EXPECT_EQ(MAnswer::JudgePart({}, 25), Frame::Open);
    EXPECT_EQ(MAnswer::JudgeBlock({}, 25, false), Frame::Open);
}

TEST(MAnswer, OfABlockTheNumberOfItsBytesTellsToo) {
    using Frame = MAnswer::Frame;
    for (const std::size_t iLength : AnswerLengths) {
        for (std::size_t iSize = 1; iSize <= LongestAnswer + 1; ++iSize) {
            SCOPED_TRACE("of " + std::to_string(iLength) + ", bytes " + std::to_string(iSize));
            const Frame iEnough = iSize < iLength ? Frame::Open : Frame::Whole;
            const bool bOthers = iSize != iLength && IsAnswerLength(iSize);
            EXPECT_EQ(MAnswer::JudgeBlock(Part(iSize, 0), iLength, false),
                      bOthers ? Frame::Foreign : iEnough);
            // Without room for more it may be a part of a longer one, if there is any.
            const bool bLonger = iSize >= iLength && iSize < LongestAnswer;
            EXPECT_EQ(MAnswer::JudgeBlock(Part(iSize, 0), iLength, true),
                      bOthers || bLonger ? Frame::Foreign : iEnough);
        }
        EXPECT_EQ(MAnswer::JudgeBlock(Part(iLength + 2, iLength), iLength, true), Frame::Whole);
    }
}

TEST(MAnswer, ABlocksEndGoesBeforeItsNumberOfBytes) {
    const std::size_t iLonger = LengthOf(0);
    const std::size_t iAsked = LengthOf(1);
    const std::size_t iShorter = LengthOf(2);
    EXPECT_EQ(MAnswer::JudgeBlock(Part(iLonger, iAsked), iAsked, false), MAnswer::Frame::Whole);
    EXPECT_EQ(MAnswer::JudgeBlock(Part(iLonger, 10), iAsked, false), MAnswer::Frame::Whole);
    EXPECT_EQ(MAnswer::JudgeBlock(Part(iAsked, iShorter), iAsked, false), MAnswer::Frame::Foreign);
    EXPECT_EQ(MAnswer::JudgeBlock(Part(iShorter, 5), iAsked, false), MAnswer::Frame::Open);
}

TEST(MAnswer, ExtractsAFieldWithinTheAnswerOnly) {
    const std::vector<std::uint8_t> objAnswer = Bytes("abc\xFF");
    EXPECT_EQ(MAnswer::ExtractField(objAnswer, 0, 2), "ab");
    EXPECT_EQ(MAnswer::ExtractField(objAnswer, 2, 2), "c\xFF");
    EXPECT_EQ(MAnswer::ExtractField(objAnswer, 4, 0), "");
    EXPECT_THROW(MAnswer::ExtractField(objAnswer, 3, 2), std::out_of_range);
    try {
        MAnswer::ExtractField(objAnswer, 3, 2);
    } catch (const std::out_of_range& objError) {
        EXPECT_STREQ(objError.what(), "the answer ends inside a field");
    }
    EXPECT_THROW(MAnswer::ExtractField(objAnswer, 5, 0), std::out_of_range);
    EXPECT_THROW(MAnswer::ExtractField(objAnswer, 4, 1), std::out_of_range);
}
