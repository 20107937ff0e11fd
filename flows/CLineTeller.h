#pragma once

#include "flows/CDoingState.h"
#include "flows/IStatusLineView.h"
#include "link/CInterface.h"
#include "link/ISessionEvents.h"

#include <array>
#include <functional>
#include <string>
#include <utility>

/// Keeps the line at the foot of the window as it stands with the link and with what is being done.
/// It goes by what the session tells, asks nothing and nobody, and keeps no history: what is told
/// next takes the place of what was told before.
///
/// It hears of the session before the window does, so that the line is right while a box stands.
class CLineTeller : public ISessionEvents {
public:
    /// Something that is being done with the printer, from its beginning to its end. They nest:
    /// what is begun later stands in the line until it is over.
    class Doing {
    public:
        /// p_objTeller is not owned and outlives this. p_strName as CDoingState has it.
        Doing(CLineTeller& p_objTeller, std::string p_strName);
        ~Doing();
        Doing(const Doing&) = delete;
        Doing& operator=(const Doing&) = delete;

        /// What has made it fail, as far as it was told. Characters that were lost, and on USB that
        /// nothing was answered to a command that asks for nothing, do not count.
        [[nodiscard]] const CFailure& Failure() const { return m_objFailure; }

    private:
        friend class CLineTeller;

        CLineTeller& m_objTeller;
        Doing* m_objOuter;
        CDoingState m_objState;
        CFailure m_objFailure;
    };

    /// p_objNext is told everything, behind the line. None is owned; all outlive this.
    CLineTeller(ISessionEvents& p_objNext, const CInterface& p_objInterface,
                IStatusLineView& p_objView);

    /// The active interface or the settings of its link are not what they were.
    void ShowLink();

    /// "192.168.10.20:8000" while the LAN is the active interface and connected; else empty.
    [[nodiscard]] std::string LanPlace() const;
    /// How often the LAN was connected so far.
    [[nodiscard]] int LanConnections() const { return m_iLanConnections; }

    /// Whom to tell that LanPlace may have changed; null for nobody.
    void OnLanPlace(std::function<void()> p_fnTold) { m_fnLanPlace = std::move(p_fnTold); }

    void OnBusy(bool p_bBusy) override { m_objNext.OnBusy(p_bBusy); }
    void OnLinkStatus(const CLinkStatus& p_objStatus) override;
    void OnStep(std::int16_t p_iStep, std::int16_t p_iSteps) override;
    void OnWaiting(std::int16_t p_iSeconds) override;
    void OnStatus(const std::string& p_strText) override { m_objNext.OnStatus(p_strText); }
    void OnHeadCheck(const std::string& p_strText) override { m_objNext.OnHeadCheck(p_strText); }
    void OnFailure(const CFailure& p_objFailure) override;
    void OnCommandFailed(const CFailure& p_objFailure) override;

private:
    void ShowDoing();
    void Note(const CFailure& p_objFailure);
    [[nodiscard]] bool IsConnecting() const;

    ISessionEvents& m_objNext;
    const CInterface& m_objInterface;
    IStatusLineView& m_objView;
    std::array<CLinkStatus, 3> m_objStatus;  // by interface
    Doing* m_objDoing = nullptr;             // the innermost; not owned
    int m_iLanConnections = 0;
    std::function<void()> m_fnLanPlace;
};
