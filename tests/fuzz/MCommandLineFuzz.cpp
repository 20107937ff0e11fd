#include "cli/CCommandError.h"
#include "cli/CTarget.h"
#include "cli/CWantedSettings.h"
#include "cli/MJsonSettings.h"
#include "cli/MUtf8.h"
#include "model/MSettingText.h"
#include "platform/qt/MSerialSettings.h"
#include "protocol/MCommand.h"
#include "protocol/MSettingRoute.h"
#include "tests/fuzz/MFuzzTargets.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

using MFuzz::Require;

namespace {

/// The words of a command line, which the system ends at a byte 0, one a line here.
std::vector<std::string> TakeWords(MFuzz::Input p_objInput) {
    std::vector<std::string> strWords(1);
    for (const std::uint8_t iByte : p_objInput) {
        if (iByte == '\n' || iByte == 0) {
            strWords.emplace_back();
        } else {
            strWords.back() += static_cast<char>(iByte);
        }
    }
    return strWords;
}

std::optional<CTarget> Parsed(const std::string& p_strText) {
    try {
        return CTarget::Parse(p_strText);
    } catch (const CCommandError& objError) {
        Require(objError.Code() == MExitCode::Wrong, "a wrong name is a wrong command line");
        Require(objError.Words().m_strTarget == p_strText && !objError.Words().m_strWhat.empty() &&
                    !objError.Words().m_strHint.empty(),
                "a refusal names the text and the way out");
        return std::nullopt;
    }
}

void RequireSamePlace(const CTarget& p_objOne, const CTarget& p_objOther) {
    Require(p_objOne.m_iLink == p_objOther.m_iLink && p_objOne.m_strHost == p_objOther.m_strHost &&
                p_objOne.m_iPort == p_objOther.m_iPort &&
                p_objOne.m_strDevice == p_objOther.m_strDevice &&
                p_objOne.m_strLine == p_objOther.m_strLine,
            "another place is written as it is read");
}

void RequireMeant(const CTarget& p_objTarget) {
    switch (p_objTarget.m_iLink) {
    case CTarget::Link::Lan:
        Require(!p_objTarget.m_strHost.empty() && p_objTarget.m_iPort != 0, "a host, and a port");
        Require(p_objTarget.m_strHost.find_first_of("[]/ \t") == std::string::npos,
                "a host's name");
        break;
    case CTarget::Link::Com:
        Require(!p_objTarget.m_strDevice.empty(), "a device");
        Require(MSerialSettings::Parse(p_objTarget.m_strLine).has_value(), "settings of a line");
        break;
    case CTarget::Link::Usb:
        Require(p_objTarget.m_iPorts.empty() || p_objTarget.m_strSerialNumber.empty(),
                "a port or a serial number");
        Require(std::ranges::all_of(p_objTarget.m_iPorts,
                                    [](int p_iPort) { return p_iPort > 0 && p_iPort <= 255; }),
                "ports as USB numbers them");
        break;
    }
}

void CheckTarget(const std::string& p_strText) {
    const std::optional<CTarget> objTarget = Parsed(p_strText);
    if (!objTarget) {
        return;
    }
    Require(objTarget->m_strText == p_strText, "it is kept as it was written");
    Require(CTarget::IsMeant(p_strText), "what is taken looks like it");
    RequireMeant(*objTarget);
    CPrinterPlace objPlace;
    objPlace.m_iPort = std::uint16_t{9100};
    objPlace.m_strLine = "115200,N,7,2";
    const CTarget objMoved = objTarget->At(objPlace);
    const std::optional<CTarget> objAgain = Parsed(objMoved.m_strText);
    Require(objAgain.has_value(), "another place is a printer's name");
    RequireSamePlace(*objAgain, objMoved);
}

std::size_t Known(const CSnapshot& p_objSnapshot) {
    return static_cast<std::size_t>(
        std::ranges::count_if(MSettings::All(), [&](const MSettings::Row& p_objRow) {
            return p_objSnapshot.IsKnown(p_objRow);
        }));
}

/// What is wanted, said once more in the words that show it.
std::vector<std::string> WordsOf(const CSnapshot& p_objSnapshot) {
    std::vector<std::string> strWords;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (!p_objSnapshot.IsKnown(objRow)) {
            continue;
        }
        const auto strShown = MSettingText::Show(objRow, p_objSnapshot.Items());
        Require(strShown.has_value(), "what is wanted is a value");
        Require(MSettingRoute::CarriedBy(objRow) != MSettingRoute::Command::None,
                "what is wanted can be sent");
        strWords.push_back(std::string(objRow.m_strName) + "=" + MUtf8::FromLatin1(*strShown));
    }
    return strWords;
}

}  // namespace

void MFuzzTargets::Target(MFuzz::Input p_objInput) {
    for (const std::string& strWord : TakeWords(p_objInput)) {
        CheckTarget(strWord);
        // Most of a name's beginnings a mutation would not find.
        for (const std::string& strBeginning : CTarget::Beginnings()) {
            CheckTarget(strBeginning + strWord);
        }
    }
}

void MFuzzTargets::Words(MFuzz::Input p_objInput) {
    const std::vector<std::string> strWords = TakeWords(p_objInput);
    CWantedSettings objWanted;
    objWanted.TakeWords(strWords);
    const CSnapshot& objSnapshot = objWanted.Wanted();
    Require(Known(objSnapshot) + objWanted.Problems().size() == strWords.size(),
            "each word is taken or refused");
    Require(objWanted.IsEmpty() == (Known(objSnapshot) == 0), "nothing wanted is nothing");
    for (const CFileProblem& objProblem : objWanted.Problems()) {
        Require(!objProblem.m_strReason.empty(), "what is wrong has words");
    }
    MFuzz::RequireRendered(objSnapshot.Items());
    Require(MCommand::IsSetExact(objSnapshot.Items()) &&
                MCommand::IsLanSetExact(objSnapshot.Items()),
            "what is wanted fits the commands");

    CWantedSettings objAgain;
    objAgain.TakeWords(WordsOf(objSnapshot));
    Require(objAgain.Problems().empty(), "what is shown can be said");
    for (const MSettings::Row& objRow : MSettings::All()) {
        Require(MSettingText::Same(objRow, objSnapshot.Items(), objAgain.Wanted().Items()),
                "what is shown means the same");
    }
    const CFileContent objFile = MJsonSettings::Read(MJsonSettings::Text(objSnapshot));
    Require(objFile.m_objProblems.empty(), "what is wanted can be kept in a file");
    MFuzz::RequireSame(objFile.m_objSnapshot.Items(), objSnapshot.Items());
}
