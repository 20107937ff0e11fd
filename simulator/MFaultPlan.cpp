#include "simulator/MFaultPlan.h"

#include "simulator/MPrintable.h"

#include <string>

namespace {

CWireStep Whole(const CFaultSettings& p_objFaults, std::string_view p_strAnswer,
                std::string_view p_strNote) {
    CWireStep objStep{{}, std::string(p_strAnswer), false, std::string(p_strNote)};
    if (p_objFaults.m_bJunk) {
        objStep.m_strBytes = MFaultPlan::Junk;
        objStep.m_strNote = "junk in place of: " + objStep.m_strNote;
    }
    if (p_objFaults.m_iCut && *p_objFaults.m_iCut < objStep.m_strBytes.size()) {
        objStep.m_strBytes.resize(*p_objFaults.m_iCut);
        objStep.m_strNote += ", cut short after " + MPrintable::ByteCount(*p_objFaults.m_iCut);
    }
    if (p_objFaults.m_bJunkBefore) {
        objStep.m_strBytes.insert(0, MFaultPlan::Junk);
        objStep.m_strNote = "junk, then: " + objStep.m_strNote;
    }
    return objStep;
}

std::vector<CWireStep> Pieces(const CWireStep& p_objWhole, std::size_t p_iBytes,
                              std::chrono::milliseconds p_iGap) {
    const std::size_t iCount = (p_objWhole.m_strBytes.size() + p_iBytes - 1) / p_iBytes;
    std::vector<CWireStep> objSteps;
    for (std::size_t i = 0; i < iCount; ++i) {
        objSteps.push_back({i == 0 ? std::chrono::milliseconds(0) : p_iGap,
                            p_objWhole.m_strBytes.substr(i * p_iBytes, p_iBytes), false,
                            p_objWhole.m_strNote + ", piece " + std::to_string(i + 1) + " of " +
                                std::to_string(iCount)});
    }
    return objSteps;
}

}  // namespace

namespace MFaultPlan {

std::vector<CWireStep> AtConnect(const CFaultSettings& p_objFaults) {
    if (p_objFaults.m_iCloseAfter == std::size_t{0}) {
        return {{{}, {}, true, {}}};
    }
    return {};
}

std::vector<CWireStep> AtAnswer(const CFaultSettings& p_objFaults, std::size_t p_iCommand,
                                std::string_view p_strAnswer, std::string_view p_strNote) {
    std::vector<CWireStep> objSteps;
    const CWireStep objWhole = Whole(p_objFaults, p_strAnswer, p_strNote);
    const std::size_t iBytes = objWhole.m_strBytes.size();
    const bool bSent = !p_objFaults.m_bSilent && iBytes > 0;
    if (bSent && p_objFaults.m_iPieces > 0 && p_objFaults.m_iPieces < iBytes) {
        objSteps = Pieces(objWhole, p_objFaults.m_iPieces, p_objFaults.m_iGap);
    } else if (bSent) {
        objSteps.push_back(objWhole);
    }
    if (p_objFaults.m_iCloseAfter && p_iCommand >= *p_objFaults.m_iCloseAfter) {
        if (objSteps.empty()) {
            objSteps.emplace_back();
        }
        objSteps.back().m_bClose = true;
    }
    if (!objSteps.empty()) {
        objSteps.front().m_iDelay += p_objFaults.m_iDelay;
    }
    return objSteps;
}

}  // namespace MFaultPlan
