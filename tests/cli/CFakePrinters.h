#pragma once

#include "cli/CCommandError.h"
#include "cli/IPrinterConnector.h"
#include "model/MSettingText.h"
#include "protocol/MAnswer.h"
#include "protocol/MSettingRoute.h"

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// A printer that does what its test says: what it holds, and what fails when.
struct CFakePrinter {
    CItemManager m_objHeld;
    CFailure m_objFailure{};
    std::int16_t m_iFailing = MAnswer::NoGroup;  ///< the group whose answer fails; NoGroup: opening
    bool m_bSent = false;                        ///< something had gone out when opening failed
    std::string m_strCode = "00";
    std::string m_strText = "ON LINE";
    /// The codes that single maintenance commands are answered with; empty: with nothing.
    std::map<std::string, std::string> m_strCodes{};
    std::set<std::string, std::less<>> m_strUnreadable{};  ///< its answers hold no values of these
    std::string m_strInPlace;  ///< the status code that is told in place of that answer
    std::optional<CCommandError> m_objRefused{};  ///< it cannot be connected at all

    void Hold(std::string_view p_strName, std::string_view p_strValue) {
        MSettingText::Set(MSettings::Get(p_strName), m_objHeld, p_strValue);
    }
};

/// Printers by their names on the command line, and what they were asked.
class CFakePrinters : public IPrinterConnector {
public:
    std::map<std::string, CFakePrinter> m_objPrinters;
    /// Makes every printer, and says where any is; those above are none then.
    std::function<std::unique_ptr<IPrinter>(const CTarget&)> m_fnConnect;
    std::function<bool(const CTarget&)> m_fnIsTaken;
    std::vector<std::string> m_strAsked;  ///< "lan:a: read speed, parity", "usb: status"
    std::vector<std::chrono::milliseconds> m_iPauses;
    bool m_bUnplugged = false;  ///< nobody can tell where a printer is
    double m_dNow = 0;
    std::function<void(double)> m_fnOnWait;  ///< told how long

    std::unique_ptr<IPrinter> Connect(const CTarget& p_objTarget,
                                      std::chrono::milliseconds p_iPause,
                                      ISessionEvents& p_objEvents) override {
        if (m_fnConnect) {
            m_iPauses.push_back(p_iPause);
            return m_fnConnect(p_objTarget);
        }
        const CFakePrinter& objPrinter = m_objPrinters[p_objTarget.m_strText];
        if (objPrinter.m_objRefused) {
            throw CCommandError(*objPrinter.m_objRefused);
        }
        m_iPauses.push_back(p_iPause);
        return std::make_unique<CPrinter>(p_objTarget.m_strText, objPrinter, p_objEvents,
                                          m_strAsked);
    }

    bool IsTaken(const CTarget& p_objTarget) override {
        if (m_fnIsTaken) {
            return m_fnIsTaken(p_objTarget);
        }
        return m_objPrinters[p_objTarget.m_strText].m_objFailure.IsNone();
    }
    std::string KeyOf(const CTarget& p_objTarget) override {
        if (m_bUnplugged) {
            throw CCommandError(MExitCode::NotReachable, {"There is no printer", {}, {}, {}});
        }
        std::string strKey = p_objTarget.m_strText;
        std::ranges::replace_if(
            strKey, [](char p_cLetter) { return p_cLetter == ':' || p_cLetter == '/'; }, '_');
        return strKey;
    }
    [[nodiscard]] double Now() override { return m_dNow; }
    void Wait(double p_dSeconds) override {
        m_dNow += p_dSeconds;
        if (m_fnOnWait) {
            m_fnOnWait(p_dSeconds);
        }
    }

private:
    class CPrinter : public IPrinter {
    public:
        CPrinter(std::string p_strName, const CFakePrinter& p_objPrinter,
                 ISessionEvents& p_objEvents, std::vector<std::string>& p_strAsked)
            : m_strName(std::move(p_strName))
            , m_objPrinter(p_objPrinter)
            , m_objEvents(p_objEvents)
            , m_strAsked(p_strAsked) {}

        CReadReport Read(std::span<const MSettings::Row* const> p_objRows) override {
            CReadReport objReport;
            std::string strNames;
            for (const MSettings::Row* const objRow : p_objRows) {
                strNames += (strNames.empty() ? "" : ", ") + std::string(objRow->m_strName);
                if (MSettingRoute::ReportedIn(*objRow) != MAnswer::NoGroup) {
                    objReport.m_iAsked.insert(MSettingRoute::ReportedIn(*objRow));
                }
            }
            m_strAsked.push_back(m_strName + ": read " + strNames);
            if (!Open()) {
                objReport.m_objFailure = m_objPrinter.m_objFailure;
                objReport.m_bSent = m_objPrinter.m_bSent;
                return objReport;
            }
            objReport.m_bSent = true;
            objReport.m_objSnapshot.Items() = m_objPrinter.m_objHeld;
            std::int16_t iStep = 0;
            for (const std::int16_t iGroup : objReport.m_iAsked) {
                m_objEvents.OnStep(++iStep, static_cast<std::int16_t>(objReport.m_iAsked.size()));
                if (iGroup == m_objPrinter.m_iFailing) {
                    objReport.m_objFailure = m_objPrinter.m_objFailure;
                    objReport.m_strStatusCode = m_objPrinter.m_strInPlace;
                    objReport.m_strStatusText = m_objPrinter.m_strText;
                    break;
                }
                objReport.m_iAnswered.insert(iGroup);
                Answer(iGroup, objReport.m_objSnapshot);
            }
            m_objEvents.OnStep(0, 0);
            return objReport;
        }

        CStatusReport Status() override {
            m_strAsked.push_back(m_strName + ": status");
            if (!Open()) {
                return {{}, {}, 0, m_objPrinter.m_objFailure, m_objPrinter.m_bSent};
            }
            m_objEvents.OnStatus("");
            return {m_objPrinter.m_strCode, m_objPrinter.m_strText, 0.0254, {}, true};
        }

        CStatusReport Send(const std::string& p_strCommand) override {
            m_strAsked.push_back(m_strName + ": " + p_strCommand);
            if (!Open()) {
                return {{}, {}, 0, m_objPrinter.m_objFailure, m_objPrinter.m_bSent};
            }
            const auto objCode = m_objPrinter.m_strCodes.find(p_strCommand);
            if (objCode == m_objPrinter.m_strCodes.end()) {
                return {m_objPrinter.m_strCode, m_objPrinter.m_strText, 0, {}, true};
            }
            CFailure objFailure;
            objFailure.m_iKind =
                objCode->second.empty() ? CFailure::Kind::NoReply : CFailure::Kind::None;
            return {objCode->second, {}, 0, objFailure, true};
        }

    private:
        bool Open() {
            CLinkStatus objStatus;
            objStatus.m_iState = CLinkStatus::State::Opening;
            m_objEvents.OnLinkStatus(objStatus);
            return m_objPrinter.m_objFailure.IsNone() ||
                   m_objPrinter.m_iFailing != MAnswer::NoGroup;
        }

        void Answer(std::int16_t p_iGroup, CSnapshot& p_objSnapshot) const {
            for (const MSettings::Row& objRow : MSettings::All()) {
                if (MSettingRoute::ReportedIn(objRow) == p_iGroup &&
                    !m_objPrinter.m_strUnreadable.contains(objRow.m_strName)) {
                    p_objSnapshot.SetKnown(objRow);
                }
            }
        }

        std::string m_strName;
        const CFakePrinter& m_objPrinter;
        ISessionEvents& m_objEvents;
        std::vector<std::string>& m_strAsked;
    };
};
