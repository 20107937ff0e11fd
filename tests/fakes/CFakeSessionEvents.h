#pragma once

#include "link/ISessionEvents.h"

#include <array>
#include <string>
#include <vector>

/// Hears of a session and keeps a line of everything: "busy", "idle", "link 1 open 10.0.0.1:8000",
/// "step 1 of 3", "status ON LINE", "head ON LINE", "failure NoReply", "command failed LanNotSent".
class CFakeSessionEvents : public ISessionEvents {
public:
    std::vector<std::string> m_strLines;

    /// The lines that begin with p_strBeginning.
    [[nodiscard]] std::vector<std::string> Lines(const std::string& p_strBeginning) const {
        std::vector<std::string> strFound;
        for (const std::string& strLine : m_strLines) {
            if (strLine.starts_with(p_strBeginning)) {
                strFound.push_back(strLine);
            }
        }
        return strFound;
    }

    static std::string Name(CFailure::Kind p_iKind) {
        static constexpr std::array<const char*, 23> Names{"None",
                                                           "SerialHeld",
                                                           "SerialNotOpened",
                                                           "SerialNotOpen",
                                                           "SerialNotSent",
                                                           "SerialLost",
                                                           "SerialOverrun",
                                                           "LanError",
                                                           "LanNotConnected",
                                                           "LanNotSent",
                                                           "LanClosed",
                                                           "UsbNotOpened",
                                                           "UsbNotReady",
                                                           "UsbNoDeviceId",
                                                           "UsbMismatch",
                                                           "UsbNotSent",
                                                           "UsbNoAnswer",
                                                           "UsbStrayAnswer",
                                                           "NoReply",
                                                           "NoLink",
                                                           "TimeUp",
                                                           "ParallelNotOpened",
                                                           "ParallelNotSent"};
        return Names.at(static_cast<std::size_t>(p_iKind));
    }

    void OnBusy(bool p_bBusy) override { m_strLines.emplace_back(p_bBusy ? "busy" : "idle"); }

    void OnLinkStatus(const CLinkStatus& p_objStatus) override {
        static constexpr std::array<const char*, 5> States{"closed", "opening", "open",
                                                           "closed by the printer", "failed"};
        std::string strLine = "link " + std::to_string(p_objStatus.m_iInterface) + " " +
                              States.at(static_cast<std::size_t>(p_objStatus.m_iState));
        if (!p_objStatus.m_strWhere.empty()) {
            strLine += " " + p_objStatus.m_strWhere;
        }
        if (!p_objStatus.m_objFailure.IsNone()) {
            strLine += ": " + Name(p_objStatus.m_objFailure.m_iKind);
        }
        m_strLines.push_back(strLine);
    }

    void OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) override {
        m_strLines.push_back("step " + std::to_string(p_iStep) + " of " + std::to_string(p_iSteps));
    }

    void OnWaiting(std::int16_t p_iSeconds) override { m_iWaiting.push_back(p_iSeconds); }

    void OnStatus(const std::string& p_strText) override {
        m_strLines.push_back("status " + p_strText);
    }

    void OnHeadCheck(const std::string& p_strText) override {
        m_strLines.push_back("head " + p_strText);
    }

    void OnFailure(const CFailure& p_objFailure) override {
        m_objFailures.push_back(p_objFailure);
        m_strLines.push_back("failure " + Name(p_objFailure.m_iKind));
    }

    void OnCommandFailed(const CFailure& p_objFailure) override {
        m_strLines.push_back("command failed " + Name(p_objFailure.m_iKind));
    }

    std::vector<CFailure> m_objFailures;
    std::vector<std::int16_t> m_iWaiting;  ///< the seconds of each wait, which are no lines
};
