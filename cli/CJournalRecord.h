#pragma once

#include "jobs/CWritePlan.h"

#include <string>

/// A change of a printer's settings that was begun, as it is kept until it is whole or undone.
struct CJournalRecord {
    std::string m_strTarget{};   ///< the printer as the command line has named it
    std::string m_strStarted{};  ///< when: "2026-11-22T04:30:00Z"
    CWritePlan m_objPlan{};
};
