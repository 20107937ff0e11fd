#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "simulator/CSession.h"
#include "tests/fuzz/CFuzzInput.h"
#include "tests/fuzz/MFuzzTargets.h"
#include "tests/golden/MGolden.h"

#include <string>
#include <string_view>
#include <vector>

using MFuzz::Input;
using MFuzz::Require;

namespace {

constexpr std::size_t MostHeld = CCommandReader::LongestCommand + CCommandReader::LongestShown;

/// Nobody reads it.
class CNoLog : public ISimulatorLog {
    void Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) override {}
};

/// The commands that a reader finds in a stream that comes in pieces.
std::vector<std::string> Commands(Input p_objStream, std::size_t p_iPiece) {
    std::vector<std::string> strCommands;
    std::size_t iTold = 0;
    CCommandReader objReader;
    CFuzzInput objRest(p_objStream);
    std::size_t iFed = 0;
    while (!objRest.IsEmpty()) {
        const Input objPiece = objRest.Block(p_iPiece);
        iFed += objPiece.size();
        objReader.Feed(objPiece, [&](const CCommandReader::Found& p_objFound) {
            iTold += p_objFound.m_iCount;
            Require(p_objFound.m_strBytes.size() <= p_objFound.m_iCount,
                    "no more is shown than came");
            if (p_objFound.m_bCommand) {
                strCommands.push_back(p_objFound.m_strBytes);
                return;
            }
            Require(p_objFound.m_strBytes.size() <= CCommandReader::LongestShown,
                    "of bytes left out a few are shown");
        });
        Require(objReader.Held() <= MostHeld, "no stream makes it grow");
        Require(iTold + objReader.Held() == iFed, "every byte is a command's, left out or held");
    }
    return strCommands;
}

/// What a printer answers to a stream, piece by piece.
void CheckSession(Input p_objStream, std::size_t p_iPiece, std::size_t p_iCommands,
                  CPrinter& p_objPrinter) {
    CNoLog objLog;
    CSession objSession(1, p_objPrinter, {}, objLog);
    Require(objSession.Connected().empty(), "a printer that behaves waits");
    std::size_t iSteps = 0;
    CFuzzInput objRest(p_objStream);
    while (!objRest.IsEmpty()) {
        for (const CWireStep& objStep : objSession.Received(objRest.Block(p_iPiece))) {
            ++iSteps;
            Require(!objStep.m_bClose, "a printer that behaves stays");
            const std::string& strAnswer = objStep.m_strBytes;
            const bool bStatus =
                strAnswer.size() == static_cast<std::size_t>(MAnswer::StatusLength) &&
                strAnswer.front() == static_cast<char>(MAnswer::StatusHead);
            const bool bSettings = strAnswer.starts_with("{") && strAnswer.ends_with("|}");
            Require(bStatus || bSettings, "an answer is a status or settings");
        }
    }
    Require(iSteps == p_iCommands, "each command has its answer");
}

/// Whatever a printer was sent, it answers with its settings at their widths.
void CheckAnswers(const CPrinter& p_objPrinter) {
    MFuzz::RequireRendered(p_objPrinter.Items());
    for (std::int16_t iGroup = 0; iGroup <= MAnswer::ParameterExpansion; ++iGroup) {
        const std::string strAnswer = p_objPrinter.SettingsAnswer(iGroup);
        Require(strAnswer.size() == std::string_view(MGolden::Answer(iGroup)).size(),
                "an answer has its length");
        const CItemManager objRead;
        const auto* const arrBytes = reinterpret_cast<const std::uint8_t*>(strAnswer.data());
        Require(MAnswer::DistributeAnswer(objRead, {arrBytes, strAnswer.size()}, iGroup),
                "an answer can be read");
        MFuzz::RequireRendered(objRead);
    }
}

/// What it holds can be sent to another printer, which answers the same then; but for a client
/// identifier with filling bytes in it, of which less is kept than the command has room for.
void CheckAnother(const CPrinter& p_objPrinter) {
    const CItemManager& objItems = p_objPrinter.Items();
    Require(MCommand::IsSetExact(objItems), "what is held has its widths");
    CPrinter objOther;
    const bool bLan = MCommand::IsLanSetExact(objItems);
    for (const std::string& strCommand : MCommand::SetCommands(objItems)) {
        Require(objOther.Handle(strCommand).m_bAccepted, "what is held can be set");
    }
    for (const std::string& strCommand : MCommand::LanSetCommands(objItems)) {
        Require(objOther.Handle(strCommand).m_bAccepted || !bLan,
                "a place that is held can be set");
    }
    for (const std::int16_t iGroup : {MAnswer::Adjustment, MAnswer::Parameter, MAnswer::Lan}) {
        Require(objOther.SettingsAnswer(iGroup) == p_objPrinter.SettingsAnswer(iGroup) ||
                    (iGroup == MAnswer::Lan && !bLan),
                "what is held comes back");
    }
}

}  // namespace

void MFuzzTargets::CommandReader(Input p_objInput) {
    CFuzzInput objInput(p_objInput);
    const std::size_t iPiece = 1 + objInput.Pick(64);
    const Input objStream = objInput.Rest();
    const std::vector<std::string> strCommands = Commands(objStream, iPiece);
    for (const std::string& strCommand : strCommands) {
        Require(strCommand.starts_with("{") && strCommand.ends_with(MCommand::CommandEnd) &&
                    strCommand.size() <= CCommandReader::LongestCommand,
                "a command has its two ends");
    }
    Require(Commands(objStream, objStream.size() + 1) == strCommands,
            "it does not matter where it is cut");
    CPrinter objPrinter;
    CheckSession(objStream, iPiece, strCommands.size(), objPrinter);
    CheckAnswers(objPrinter);
    CheckAnother(objPrinter);
}
