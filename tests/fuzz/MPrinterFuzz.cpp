#include "link/CAnswerRouter.h"
#include "platform/usb/MDeviceId.h"
#include "protocol/MAnswer.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/fuzz/CFuzzInput.h"
#include "tests/fuzz/MFuzzTargets.h"
#include "tests/golden/MGolden.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

using MFuzz::Input;
using MFuzz::Require;

namespace {

constexpr std::size_t LongestAnswer = 96;  // that of the LAN group

/// A router with all that it fills.
struct CSide {
    explicit CSide(std::int16_t p_iGroup) {
        m_objRouter.SetAnswerSelector(p_iGroup);
        m_objRouter.BeginCommand(p_iGroup == MAnswer::NoGroup ? AwaitedAnswer::Any
                                                              : AwaitedAnswer::Settings);
    }

    void RequireSameAs(const CSide& p_objOther) const {
        MFuzz::RequireSame(m_objItems, p_objOther.m_objItems);
        Require(m_objEvents.m_strLines == p_objOther.m_objEvents.m_strLines, "both tell the same");
        Require(m_objState.m_iReplies == p_objOther.m_objState.m_iReplies &&
                    m_objState.m_iAnswers == p_objOther.m_objState.m_iAnswers &&
                    m_objState.m_iPendingAnswers == p_objOther.m_objState.m_iPendingAnswers,
                "both count the same");
    }

    CItemManager m_objItems;
    CLinkState m_objState;
    CFakeSessionEvents m_objEvents;
    CAnswerRouter m_objRouter{m_objItems, m_objState, m_objEvents};
};

/// -1 to 4: no group, or one of those that there are.
std::int16_t TakeGroup(CFuzzInput& p_objInput) {
    return static_cast<std::int16_t>(static_cast<int>(p_objInput.Pick(6)) - 1);
}

/// The bytes behind an answer's head as p_objGolden names them, by which each field is known.
void RequireFields(const CItemManager& p_objItems, Input p_objAnswer, int p_iGroup) {
    std::size_t iPlace = MAnswer::FieldsPosition;
    for (const MGolden::Answered& objAnswered : MGolden::Answers(p_iGroup)) {
        const MGolden::Item& objGolden = MGolden::Of(objAnswered.m_objSlot);
        const auto iLength = static_cast<std::size_t>(objGolden.m_iLength);
        const auto objField = p_objAnswer.subspan(iPlace, iLength);
        const std::string strField(objField.begin(), objField.end());
        iPlace += iLength;
        const CItem& objItem = *(p_objItems.*objAnswered.m_objSlot);
        if (objGolden.m_iDataType == ItemDataType::Hexadecimal) {
            Require(objItem.m_vValue.Number() != nullptr, "hexadecimal digits are a number");
            continue;
        }
        const std::string* const strHeld = objItem.m_vValue.Text();
        Require(strHeld != nullptr &&
                    (*strHeld == strField || objAnswered.m_objSlot == &CItemManager::m_objFontCode),
                "a field comes into its item as it stands");
        const bool bDigits =
            std::ranges::all_of(strField, [](char c) { return c >= '0' && c <= '9'; });
        Require(!bDigits || objGolden.m_bFixed || *strHeld != strField ||
                    objItem.GetValueString() == strField,
                "digits go back as they came");
    }
}

void CheckAssembler(Input p_objBytes, std::size_t p_iLength) {
    CAnswerAssembler objAssembler;
    for (const std::uint8_t iByte : p_objBytes) {
        if (MAnswer::BeginsAnswer(iByte) && objAssembler.IsDoubtful()) {
            Require(objAssembler.Settle() && objAssembler.Answer().size() == p_iLength,
                    "what was in doubt has its length");
        }
        const CAnswerAssembler::Result iResult = objAssembler.Append(iByte, p_iLength);
        const Bytes& objAnswer = objAssembler.Answer();
        Require(objAnswer.size() <= std::max(LongestAnswer, p_iLength) + 1,
                "no stream makes it grow");
        Require(!objAssembler.IsDoubtful() || objAnswer.size() >= p_iLength,
                "doubt begins at the length");
        Require(iResult != CAnswerAssembler::Result::Status ||
                    (objAnswer.size() == MAnswer::StatusLength &&
                     objAnswer.front() == MAnswer::StatusHead),
                "a status has 13 bytes");
        Require(iResult != CAnswerAssembler::Result::Settings ||
                    (objAnswer.size() == std::max<std::size_t>(p_iLength, 1) &&
                     objAnswer.front() == MAnswer::SettingsHead),
                "settings have the length that was asked for");
    }
}

void CheckReceiver(Input p_objBytes, std::int16_t p_iLength) {
    constexpr std::size_t iLongestFrame = 256;
    CLinkState objState;
    CSerialReceiver objReceiver(objState);
    for (const std::uint8_t iByte : p_objBytes) {
        if (MAnswer::BeginsAnswer(iByte)) {
            objReceiver.Settle();
        }
        const CSerialReceiver::Result iResult = objReceiver.Take(iByte, p_iLength);
        const std::size_t iSize = objReceiver.Frame().size();
        Require(iSize <= iLongestFrame, "no line makes it grow");
        Require(iResult != CSerialReceiver::Result::Status || iSize == MAnswer::StatusLength,
                "a status has 13 bytes");
        Require(iResult != CSerialReceiver::Result::Settings ||
                    iSize == static_cast<std::size_t>(p_iLength) / 2,
                "settings have half of the receive length");
    }
}

}  // namespace

void MFuzzTargets::LanStream(Input p_objInput) {
    CFuzzInput objInput(p_objInput);
    const std::int16_t iGroup = TakeGroup(objInput);
    const std::size_t iPiece = 1 + objInput.Pick(64);
    const Input objStream = objInput.Rest();
    CheckAssembler(objStream, static_cast<std::size_t>(MAnswer::ReceiveLength(iGroup)) / 2);

    CSide objWhole(iGroup);
    objWhole.m_objRouter.TakeStream(objStream);
    CSide objCut(iGroup);
    CFuzzInput objRest(objStream);
    while (!objRest.IsEmpty()) {
        objCut.m_objRouter.TakeStream(objRest.Block(iPiece));
    }
    objWhole.RequireSameAs(objCut);
    // A wait that is over takes what is in doubt, on both.
    for (CSide* const objSide : {&objWhole, &objCut}) {
        objSide->m_objRouter.SettleQuiet(1, 0);
        objSide->m_objRouter.SettleQuiet(1, 0);
    }
    objWhole.RequireSameAs(objCut);
    const COutcome& objLearned = objWhole.m_objRouter.Learned();
    Require(!objLearned.m_iGroup || *objLearned.m_iGroup == iGroup,
            "only what was asked for is filled");
    if (!objLearned.m_iGroup) {
        MFuzz::RequireSame(objWhole.m_objItems, CItemManager());
    }
    MFuzz::RequireRendered(objWhole.m_objItems);
}

void MFuzzTargets::SerialLine(Input p_objInput) {
    CFuzzInput objInput(p_objInput);
    const std::int16_t iGroup = TakeGroup(objInput);
    const bool bOther = objInput.Pick(2) == 1;  // the receive length of another command
    const std::int16_t iLength = bOther ? objInput.Word() : MAnswer::ReceiveLength(iGroup);
    const Input objLine = objInput.Rest();
    CheckReceiver(objLine, iLength);

    CSide objSide(iGroup);
    for (const std::uint8_t iByte : objLine) {
        objSide.m_objRouter.TakeSerial(iByte, iLength);
        Require(objSide.m_objState.m_iPendingAnswers == 0, "what has come is pending no more");
    }
    objSide.m_objRouter.SettleQuiet(1, 0);
    objSide.m_objRouter.SettleQuiet(1, 0);
    const COutcome& objLearned = objSide.m_objRouter.Learned();
    Require(!objLearned.m_iGroup || *objLearned.m_iGroup == iGroup,
            "only what was asked for is filled");
    if (!objLearned.m_iGroup) {
        MFuzz::RequireSame(objSide.m_objItems, CItemManager());
    }
    MFuzz::RequireRendered(objSide.m_objItems);
}

void MFuzzTargets::UsbAnswer(Input p_objInput) {
    CFuzzInput objInput(p_objInput);
    const std::int16_t iGroup = TakeGroup(objInput);
    const bool bOther = objInput.Pick(2) == 1;
    const std::int16_t iLength = bOther ? objInput.Word() : MAnswer::ReceiveLength(iGroup);
    const auto iBuffer = static_cast<std::size_t>(std::max<std::int16_t>(iLength, 0));
    const Input objAnswer = objInput.Block(iBuffer);  // the library gives no more
    CSide objSide(iGroup);
    CAnswerRouter& objRouter = objSide.m_objRouter;
    const bool bCut = objRouter.IsCut(objAnswer, iBuffer);
    const bool bAnothers = objRouter.IsAnotherGroups(objAnswer, iBuffer);
    Require(!bCut || !bAnothers, "what is cut is nobody's yet");
    Require(!bCut || CAnswerRouter::BeginsUsbAnswer(objAnswer), "only what begins can be cut");
    bool bTaken = false;
    try {
        bTaken = objRouter.TakeUsbAnswer(objAnswer, iLength);
    } catch (const std::out_of_range&) {
        Require(bOther, "the receive length of the group leaves room for its fields");
        return;
    }
    const bool bSettings = !objAnswer.empty() && objAnswer.front() == MAnswer::UsbSettingsHead;
    Require(bSettings || bTaken, "only settings can fill nothing");
    Require(bTaken == objRouter.HasUsbFilledGroup() || !bSettings,
            "what is taken has filled its group");
    Require(!objRouter.HasUsbFilledGroup() || (!bCut && !bAnothers && bSettings),
            "only the whole answer of the group fills it");
    if (objRouter.HasUsbFilledGroup()) {
        Require(objRouter.Learned().m_iGroup == iGroup, "the group is told");
        RequireFields(objSide.m_objItems, objAnswer.subspan(MAnswer::UsbHeadLength), iGroup);
    } else {
        MFuzz::RequireSame(objSide.m_objItems, CItemManager());
    }
    MFuzz::RequireRendered(objSide.m_objItems);
}

void MFuzzTargets::DeviceId(Input p_objInput) {
    const std::string strText = MDeviceId::Text(p_objInput);
    Require(strText.size() <= p_objInput.size(), "a text has no more than came");
    Require(strText.find('\0') == std::string::npos, "a text ends before the first byte 0");
    const std::string_view strCame(reinterpret_cast<const char*>(p_objInput.data()),
                                   p_objInput.size());
    Require(strCame.find(strText) <= 2, "a text stands behind the length, or at the front");
    const auto strMakers = MDeviceId::Makers(strText);
    for (const std::string& strMaker : strMakers) {
        Require(strText.find(strMaker) != std::string::npos &&
                    strMaker.find(';') == std::string::npos,
                "a maker is a part of the text");
        Require(MDeviceId::IsMaker(strText, strMaker), "a maker that is named is one");
    }
    Require(!MDeviceId::IsMaker(strText, "Varden") || !strMakers.empty(), "no maker is none");
    // What is told behind everything else is found, with a right length in front and without.
    const std::string strMore = strText + ";mfg: vARDEN ;";
    Require(MDeviceId::IsMaker(strMore, "Varden"), "a further maker is found");
}

void MFuzzTargets::Distribute(Input p_objInput) {
    CFuzzInput objInput(p_objInput);
    const unsigned iPick = objInput.Pick(7);
    const std::int16_t iGroup = iPick < 5 ? static_cast<std::int16_t>(iPick) : objInput.Word();
    const bool bExists = iGroup >= 0 && iGroup <= 4;
    const Input objAnswer = objInput.Rest();
    const CItemManager objItems;
    // Behind the fields stand the two bytes that close an answer, which this does not need.
    constexpr std::size_t iEnd = 2;
    const std::size_t iNeeded =
        bExists ? std::string_view(MGolden::Answer(iGroup)).size() - iEnd : 0;
    bool bFilled = false;
    try {
        bFilled = MAnswer::DistributeAnswer(objItems, objAnswer, iGroup);
        Require(bFilled == bExists, "a group that exists is filled");
        Require(objAnswer.size() >= iNeeded || !bExists, "a field that is missing is told");
    } catch (const std::out_of_range&) {
        Require(bExists && objAnswer.size() < iNeeded, "only an answer too short is refused");
    }
    if (bFilled) {
        RequireFields(objItems, objAnswer, iGroup);
    }
    if (!bExists) {
        MFuzz::RequireSame(objItems, CItemManager());
    }
    MFuzz::RequireRendered(objItems);
}
