#pragma once

#include "cli/CEnvironment.h"
#include "cli/CStateJournal.h"
#include "cli/CTarget.h"
#include "cli/ICommand.h"
#include "cli/MMaintenance.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// "maintain": has a printer carry out a maintenance function. What changes something in it, or
/// uses labels up, has to be confirmed by typing the function's name, or beforehand.
class CMaintainCommand : public ICommand {
public:
    explicit CMaintainCommand(const CEnvironment& p_objEnvironment)
        : m_objPrinters(p_objEnvironment.m_objPrinters)
        , m_objAccess(p_objEnvironment.m_objAccess)
        , m_objTerminal(p_objEnvironment.m_objTerminal)
        , m_fnState(p_objEnvironment.m_fnState) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    /// What a command line asks for, when nothing is wrong with it.
    struct Wanted {
        CTarget m_objTarget;
        const MMaintenance::Function* m_objFunction;
        MMaintenance::Values m_iValues;
    };

    /// The printer's lock, while it is needed.
    struct Guard {
        std::unique_ptr<IStateStore> m_objStore{};
        std::unique_ptr<CStateJournal> m_objJournal{};
    };

    [[nodiscard]] Wanted Check() const;
    Guard Take(const Wanted& p_objWanted, COutput& p_objOutput) const;
    [[nodiscard]] std::string AsTyped() const;
    void Confirm(const Wanted& p_objWanted);
    CStatusReport Do(const Wanted& p_objWanted, COutput& p_objOutput);
    static CStatusReport Send(IPrinter& p_objPrinter,
                              const std::vector<std::string>& p_strCommands);
    void Tell(const Wanted& p_objWanted, const CStatusReport& p_objReport,
              COutput& p_objOutput) const;
    void CheckReport(const Wanted& p_objWanted, const CStatusReport& p_objReport) const;

    IPrinterConnector& m_objPrinters;
    const IDeviceAccess& m_objAccess;
    ITerminal& m_objTerminal;
    std::function<std::unique_ptr<IStateStore>(const std::string&)> m_fnState;
    std::string m_strTarget;
    std::string m_strFunction;
    std::vector<std::string> m_strFields;
    std::string m_strState;
    bool m_bYes = false;
};
