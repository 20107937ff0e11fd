#pragma once

#include "jobs/IPrinterWays.h"
#include "jobs/IWriteEvents.h"
#include "jobs/IWriteJournal.h"
#include "simulator/CPrinter.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A printer without a wire, wherever its settings take it, and a clock that is moved by waiting.
/// What goes wrong with what it stores is the simulator's, what goes wrong with a call is here.
class CModelPrinter : public IPrinterWays {
public:
    /// What becomes of one call (a reading, a status request, a command), counted from 0.
    enum class Mishap : std::uint8_t {
        None,
        Unreached,     ///< nothing has gone out
        Unheard,       ///< it has gone out, and nothing has come of it
        Unanswered,    ///< it was carried out, and no answer came
        Troubled,      ///< it was carried out, and the status is an error
        PowerCut,      ///< the power goes before it, and comes back later
        Late,          ///< it is answered, and carried out some seconds later
        LatePowerCut,  ///< the power goes behind it, if it is no reading
    };

    /// On the network at the place that its settings name, unless told otherwise.
    explicit CModelPrinter(MSettings::Cuts p_iLink = MSettings::Cuts::Lan);

    CPrinter m_objPrinter;
    std::map<int, Mishap> m_iMishaps;          ///< by the number of the call
    bool m_bMoves = true;                      ///< goes at once to where its settings name
    double m_dPowerBack = 10;                  ///< seconds without power
    std::function<void()> m_fnBeforeCall;      ///< run before each call
    bool m_bSomebodyElse = false;              ///< somebody listens wherever it might go
    std::vector<std::string> m_strCommands{};  ///< all that it has carried out or refused
    int m_iCalls = 0;

    /// Of the commands those that set something.
    [[nodiscard]] std::vector<std::string> Sets() const;

    /// Everything that it was to do late is done.
    void Settled() { CatchUp(true); }

    /// It stands at the place and in the format that its settings name now.
    void Settle();

    std::unique_ptr<IPrinter> At(const CPrinterPlace& p_objPlace) override;
    bool IsTaken(const CPrinterPlace& p_objPlace) override;
    [[nodiscard]] double Now() const override { return m_dNow; }
    void Wait(double p_dSeconds) override { m_dNow += p_dSeconds; }

private:
    class CCall;

    Mishap Begin();
    [[nodiscard]] bool IsThere(const CPrinterPlace& p_objPlace) const;
    [[nodiscard]] std::string Line() const;
    void CutPower();
    void LookAtPower();
    void CatchUp(bool p_bAll);
    std::string Carry(const std::string& p_strCommand);

    MSettings::Cuts m_iLink;
    double m_dNow = 1000;
    double m_dBackAt = 0;
    std::string m_strLate;  // a command that is to be carried out yet
    double m_dLateAt = 0;
    std::string m_strHomeHost;
    std::string m_strHomePort;
    std::string m_strHomeLine;
    std::string m_strHost;
    std::string m_strPort;
    std::string m_strLine;
};

/// A journal in memory.
struct CModelJournal : IWriteJournal {
    std::optional<CWritePlan> m_objPlan;
    int m_iOpened = 0;
    bool m_bWrites = true;
    bool m_bCloses = true;

    bool Open(const CWritePlan& p_objPlan) override {
        if (!m_bWrites) {
            return false;
        }
        m_objPlan = p_objPlan;
        ++m_iOpened;
        return true;
    }
    bool Close() override {
        if (m_bCloses) {
            m_objPlan.reset();
        }
        return m_bCloses;
    }
};

struct CStages : IWriteEvents {
    std::vector<std::string> m_strStages;

    void OnStage(Stage p_iStage, std::size_t p_iStep, std::size_t p_iSteps) override {
        constexpr const char* Names[] = {"reading", "writing", "reading back", "restoring"};
        m_strStages.push_back(std::string(Names[static_cast<int>(p_iStage)]) + " " +
                              std::to_string(p_iStep) + "/" + std::to_string(p_iSteps));
    }
};
