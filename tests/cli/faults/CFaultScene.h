#pragma once

#include "cli/CDefaultsSource.h"
#include "cli/CEnvironment.h"
#include "cli/CTargetSource.h"
#include "tests/cli/CFakeTerminal.h"
#include "tests/cli/faults/CFaultConnector.h"
#include "tests/cli/faults/MFaultRows.h"
#include "tests/fakes/CFakeFileStore.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

/// What has come of a command line, as whoever has given it sees it, and as the printer does.
struct CFaultOutcome {
    static constexpr int NoCode = -1;  ///< something has left the program that must not

    int m_iCode = NoCode;
    std::string m_strOut;                    ///< standard output
    std::vector<std::string> m_strCommands;  ///< all that came whole to the printer
    int m_iSendings = 0;                     ///< how often anything was given to the link
    int m_iSendingsLater = 0;                ///< and how often in the twenty seconds behind the end
    double m_dSeconds = 0;
    double m_dSinceCtrlC = -1;  ///< from Ctrl-C to the end; without one negative
    int m_iSendingsSinceCtrlC = 0;
    std::map<std::string, std::string> m_strFiles;   ///< what was written, by names
    std::map<std::string, std::string> m_strBefore;  ///< what the printer held before it
    std::map<std::string, std::string> m_strAfter;   ///< and holds now
    std::set<std::string> m_strMoved;  ///< what was otherwise than before, be it for a moment
    bool m_bJournal = false;           ///< one stands
    bool m_bLocked = false;            ///< the state is held
    bool m_bClosed = false;            ///< all links are
    int m_iInside = 0;                 ///< event loops that still run
};

/// The program, a printer, and what is between them, without a process and with a clock that is
/// moved.
class CFaultScene {
public:
    explicit CFaultScene(MFaults::Link p_iLink);
    ~CFaultScene();
    CFaultScene(const CFaultScene&) = delete;
    CFaultScene& operator=(const CFaultScene&) = delete;

    /// Carries a command line out ("TARGET" in it is the printer), with --json.
    CFaultOutcome Run(const std::vector<std::string>& p_strWords,
                      const CFaultyPrinter::Plan& p_objPlan);

    /// What the printer holds, as people write it, by the settings' names.
    [[nodiscard]] std::map<std::string, std::string> Held() const;

    /// The program's state, and the printer's settings.
    std::map<std::string, std::string>& State() { return m_objState.m_strFiles; }
    [[nodiscard]] const CItemManager& Items() const { return m_objPrinter.m_objPrinter.Items(); }
    void Hold(const CItemManager& p_objItems);

    /// Whatever has gone wrong is over: the printer is where it was, plugged in and switched on.
    void Mend();

private:
    class CAccess;
    class CNothing;

    CEnvironment Environment();
    int Carry(const std::vector<std::string>& p_strWords, std::string& p_strOut);

    MFaults::Link m_iLink;
    CFakeClock m_objClock;
    CCountedLoop m_objEventLoop{m_objClock};
    CEndingInterrupt m_objInterrupt{m_objEventLoop};
    CFaultyPrinter m_objPrinter;
    CFaultConnector m_objConnector;
    CFakeFileStore m_objFiles;
    CFakeStateStore m_objState;
    CFakeTerminal m_objTerminal;
    CDefaultsSource m_objDefaults;
    std::unique_ptr<CAccess> m_objAccess;
    std::unique_ptr<CNothing> m_objNothing;
    CTargetSource m_objTargets;
};
