#pragma once

#include "jobs/CPrinterPlace.h"
#include "model/CSnapshot.h"
#include "protocol/MSettingRoute.h"

#include <cstddef>
#include <string>
#include <vector>

/// What a change of settings does: what the printer held before, what it is to hold afterwards, and
/// the commands that carry what differs. It is all that is needed to undo the change.
struct CWritePlan {
    using Command = MSettingRoute::Command;
    using Rows = std::vector<const MSettings::Row*>;

    /// A command that carries something that changes.
    struct Step {
        Command m_iCommand = Command::None;
        bool m_bCuts = false;        ///< it changes what the link in use stands on
        CPrinterPlace m_objPlace{};  ///< where the printer may be when it has been carried out
    };

    CSnapshot m_objBefore{};         ///< what the printer held, as far as it was known
    CSnapshot m_objAfter{};          ///< the same, with what is wanted
    std::vector<Step> m_objSteps{};  ///< in the order in which they are sent
    /// Where the printer was before: the target's own place, unless it is gone about another way.
    CPrinterPlace m_objHome{};

    /// Settings that a command carries, in the catalogue's order.
    [[nodiscard]] static Rows CarriedBy(Command p_iCommand);

    /// Those that any of the steps carries.
    [[nodiscard]] Rows Carried() const;

    /// Of these the ones that an answer reports: what can be verified.
    [[nodiscard]] Rows Reported() const;

    /// Of these the ones that no answer reports.
    [[nodiscard]] Rows Unreported() const;

    /// What none of the steps carries and what was known before, but for the sensors' readings:
    /// what has to stay as it was, for a printer that loses its power can forget everything.
    [[nodiscard]] Rows Others() const;

    /// The command of a step with the values of p_objSnapshot. Empty when not every field is
    /// exactly as wide as it has to be, or holds what frames a command.
    [[nodiscard]] static std::string Text(Command p_iCommand, const CSnapshot& p_objSnapshot);

    /// Where the printer may be, the likeliest first, when p_iDone of the steps have been sent.
    [[nodiscard]] std::vector<CPrinterPlace> Places(std::size_t p_iDone) const;
};
