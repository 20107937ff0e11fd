#include "cli/MMaintenance.h"

#include "cli/MParagraph.h"
#include "model/MChoiceLists.h"
#include "protocol/MCommand.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

using MMaintenance::Field;
using MMaintenance::Function;
using MMaintenance::Values;
using Asks = Function::Asks;
using Given = Field::Given;
using Texts = std::vector<std::string>;

constexpr auto NotSet = static_cast<std::int16_t>(MChoiceLists::NoSelection);

Texts HeadCheck(const Values& /*p_iValues*/) {
    return {MCommand::HeadCheck};
}

Texts RamClear(const Values& p_iValues) {
    return {MCommand::RamClear(p_iValues[0], p_iValues[1])};
}

Texts ThresholdCalib(const Values& p_iValues) {
    return {MCommand::ThresholdCalib(p_iValues[0])};
}

/// The steps as the list of them has them; the one without paper is two passes.
Texts SensorAdjust(const Values& p_iValues) {
    switch (p_iValues[0]) {
    case 0:
        return {MCommand::SensorAdjustReflect};
    case 1:
        return {MCommand::SensorAdjustTrans};
    default:
        return {MCommand::SensorAdjustPaperEnd(0), MCommand::SensorAdjustPaperEnd(1)};
    }
}

Texts TestPrint(const Values& p_iValues) {
    return {MCommand::TestPrint({.m_iPattern = p_iValues[0],
                                 .m_iLabelLength = p_iValues[1],
                                 .m_iIssueCount = p_iValues[2],
                                 .m_iPrintSpeed = p_iValues[3],
                                 .m_iSensor = p_iValues[4],
                                 .m_iCutType = p_iValues[5],
                                 .m_iPrintType = p_iValues[6]})};
}

Texts DiagPrint(const Values& p_iValues) {
    return {MCommand::DiagPrint(p_iValues[0])};
}

constexpr double HeadCheckSeconds = 5;
constexpr double SensorSeconds = 1;

const std::vector<Function>& Functions() {
    static const std::vector<Function> Rows{
        {"head-check",
         "checks the print head of",
         {},
         false,
         &HeadCheck,
         Asks::OnUsb,
         HeadCheckSeconds},
        {"ram-clear",
         "clears what is kept in",
         {{"mode", "ram-clear-mode", Given::MustBe},
          {"destination", "ram-clear-destination", Given::MayBeNone}},
         true,
         &RamClear},
        {"threshold-calib",
         "calibrates a sensor of",
         {{"sensor", "threshold-sensor", Given::MustBe}},
         true,
         &ThresholdCalib},
        {"sensor-adjust",
         "adjusts a sensor of",
         {{"step", "sensor-adjust-step", Given::MustBe}},
         true,
         &SensorAdjust,
         Asks::Always,
         SensorSeconds},
        {"test-print",
         "prints test labels on",
         {{"pattern", "test-print-pattern"},
          {"label-length", "test-print-label-length"},
          {"issue-count", "test-print-issue-count"},
          {"print-speed", "test-print-speed"},
          {"sensor", "test-print-sensor"},
          {"cut", "test-print-cut"},
          {"print-type", "test-print-type"}},
         true,
         &TestPrint},
        {"diag-print",
         "prints a diagnosis on",
         {{"print-type", "diag-print-type"}},
         true,
         &DiagPrint},
    };
    return Rows;
}

/// The field's list, or null for a number.
const MChoiceLists::List* ListOf(const Field& p_objField) {
    return MChoiceLists::Find(p_objField.m_strChoice);
}

std::int16_t StartOf(const Field& p_objField) {
    if (p_objField.m_iGiven != Given::MayBe) {
        return NotSet;
    }
    const MChoiceLists::List* const objList = ListOf(p_objField);
    return static_cast<std::int16_t>(
        objList != nullptr ? objList->m_iStartPosition
                           : MChoiceLists::GetNumber(p_objField.m_strChoice).m_iStart);
}

std::optional<std::int16_t> PositionOf(const MChoiceLists::List& p_objList,
                                       std::string_view p_strValue) {
    const std::string strName = MMaintenance::NameOf(p_strValue);
    for (std::size_t i = 0; i < p_objList.m_strEntries.size(); ++i) {
        if (!strName.empty() && MMaintenance::NameOf(p_objList.m_strEntries[i]) == strName) {
            return static_cast<std::int16_t>(i);
        }
    }
    return std::nullopt;
}

std::optional<std::int16_t> NumberOf(const MSettings::Range& p_objRange,
                                     std::string_view p_strValue) {
    std::int16_t iValue = 0;
    const char* const strEnd = p_strValue.data() + p_strValue.size();
    const auto objRead = std::from_chars(p_strValue.data(), strEnd, iValue);
    const bool bGood = objRead.ec == std::errc() && objRead.ptr == strEnd &&
                       iValue >= p_objRange.m_iMin && iValue <= p_objRange.m_iMax;
    return bGood ? std::optional(iValue) : std::nullopt;
}

std::optional<std::int16_t> ValueOf(const Field& p_objField, std::string_view p_strValue) {
    const MChoiceLists::List* const objList = ListOf(p_objField);
    return objList != nullptr
               ? PositionOf(*objList, p_strValue)
               : NumberOf(MChoiceLists::GetNumber(p_objField.m_strChoice).m_objRange, p_strValue);
}

/// Sets the field that a word names. The problem that it has, or nothing.
std::string ReadWord(const Function& p_objFunction, const std::string& p_strWord, Values& p_iValues,
                     std::vector<bool>& p_bSet) {
    const std::size_t iSign = p_strWord.find('=');
    const std::string strName = p_strWord.substr(0, iSign);
    const auto objField = std::ranges::find(p_objFunction.m_objFields, strName, &Field::m_strName);
    if (objField == p_objFunction.m_objFields.end()) {
        return std::string(p_objFunction.m_strName) + " takes no \"" + strName + "\"";
    }
    const auto iField = static_cast<std::size_t>(objField - p_objFunction.m_objFields.begin());
    if (p_bSet[iField]) {
        return strName + " stands there twice";
    }
    p_bSet[iField] = true;
    const std::string strAllowed = "it is " + MMaintenance::AllowedText(*objField);
    if (iSign == std::string::npos) {
        return strName + " has no value: " + strAllowed;
    }
    const std::string strValue = p_strWord.substr(iSign + 1);
    const std::optional<std::int16_t> iValue = ValueOf(*objField, strValue);
    if (!iValue) {
        return strName + " cannot be \"" + strValue + "\": " + strAllowed;
    }
    p_iValues[iField] = *iValue;
    return {};
}

/// What is wrong with values that are right one by one.
void CheckTogether(const Function& p_objFunction, const Values& p_iValues,
                   std::vector<std::string>& p_strProblems) {
    const bool bStray = p_objFunction.m_fnCommands == &RamClear && p_iValues[1] != NotSet &&
                        p_iValues[0] != NotSet && p_iValues[0] != MCommand::ClearParameters;
    if (bStray) {
        p_strProblems.emplace_back("destination goes with mode=parameter only");
    }
}

std::string DefaultText(const Field& p_objField) {
    switch (p_objField.m_iGiven) {
    case Given::MustBe:
        return "has to be set";
    case Given::MayBe:
        return MMaintenance::Text(p_objField, StartOf(p_objField)) + " unless set";
    case Given::MayBeNone:
        break;
    }
    return "none unless set";
}

}  // namespace

namespace MMaintenance {

std::span<const Function> All() {
    return Functions();
}

const Function* Find(std::string_view p_strName) {
    const auto objFound = std::ranges::find(Functions(), p_strName, &Function::m_strName);
    return objFound == Functions().end() ? nullptr : &*objFound;
}

std::string NameOf(std::string_view p_strEntry) {
    std::string strName;
    for (const char cLetter : p_strEntry) {
        const bool bUpper = cLetter >= 'A' && cLetter <= 'Z';
        const bool bPlain =
            bUpper || (cLetter >= 'a' && cLetter <= 'z') || (cLetter >= '0' && cLetter <= '9');
        if (bPlain) {
            strName += static_cast<char>(bUpper ? cLetter - 'A' + 'a' : cLetter);
        } else if (!strName.empty() && strName.back() != '-') {
            strName += '-';
        }
    }
    return strName.ends_with('-') ? strName.substr(0, strName.size() - 1) : strName;
}

std::vector<std::string> NamesOf(const Field& p_objField) {
    std::vector<std::string> strNames;
    if (const MChoiceLists::List* const objList = ListOf(p_objField)) {
        for (const std::string_view strEntry : objList->m_strEntries) {
            if (!strEntry.empty()) {
                strNames.push_back(NameOf(strEntry));
            }
        }
    }
    return strNames;
}

std::string AllowedText(const Field& p_objField) {
    const std::vector<std::string> strNames = NamesOf(p_objField);
    if (strNames.empty()) {
        const MSettings::Range& objRange =
            MChoiceLists::GetNumber(p_objField.m_strChoice).m_objRange;
        return std::to_string(objRange.m_iMin) + " to " + std::to_string(objRange.m_iMax);
    }
    std::string strText;
    for (std::size_t i = 0; i < strNames.size(); ++i) {
        const char* const strBefore = i == 0 ? "" : i + 1 == strNames.size() ? " or " : ", ";
        strText += strBefore + strNames[i];
    }
    return strText;
}

std::string Text(const Field& p_objField, std::int16_t p_iValue) {
    const MChoiceLists::List* const objList = ListOf(p_objField);
    if (objList == nullptr) {
        return std::to_string(p_iValue);
    }
    return p_iValue == NotSet ? ""
                              : NameOf(objList->m_strEntries[static_cast<std::size_t>(p_iValue)]);
}

Values Read(const Function& p_objFunction, const std::vector<std::string>& p_strWords,
            std::vector<std::string>& p_strProblems) {
    const std::vector<Field>& objFields = p_objFunction.m_objFields;
    Values iValues;
    std::ranges::transform(objFields, std::back_inserter(iValues), &StartOf);
    std::vector<bool> bSet(objFields.size(), false);
    for (const std::string& strWord : p_strWords) {
        const std::string strProblem = ReadWord(p_objFunction, strWord, iValues, bSet);
        if (!strProblem.empty()) {
            p_strProblems.push_back(strProblem);
        }
    }
    for (std::size_t i = 0; i < objFields.size(); ++i) {
        if (objFields[i].m_iGiven == Given::MustBe && !bSet[i]) {
            p_strProblems.push_back(std::string(objFields[i].m_strName) + " is missing: it is " +
                                    AllowedText(objFields[i]));
        }
    }
    CheckTogether(p_objFunction, iValues, p_strProblems);
    return iValues;
}

std::string HelpText() {
    constexpr std::size_t iWidth = 80;
    constexpr std::size_t iColumn = 19;
    std::string strText = "Functions, and what they take:\n";
    for (const Function& objFunction : All()) {
        strText += "  " + std::string(objFunction.m_strName) + "\n";
        for (const Field& objField : objFunction.m_objFields) {
            std::string strBegin =
                MParagraph::Pad("      " + std::string(objField.m_strName) + "=", iColumn);
            const std::string strWhat = AllowedText(objField) + "; " + DefaultText(objField);
            for (const std::string& strLine : MParagraph::Wrap(strWhat, iWidth - iColumn)) {
                strText.append(strBegin).append(" ").append(strLine).append("\n");
                strBegin.assign(iColumn, ' ');
            }
        }
    }
    return strText;
}

}  // namespace MMaintenance
