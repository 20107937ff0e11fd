#pragma once

#include "jobs/CWritePlan.h"

/// Making the plan of a change.
namespace MWritePlan {

/// The rows that have to be read before a plan can be made: all that is reported of what travels
/// in one command with anything of p_objWanted.
CWritePlan::Rows ToRead(const CSnapshot& p_objWanted);

/// What a printer holds and what it is to hold.
struct Ends {
    const CSnapshot& m_objRead;    ///< what it has told
    const CSnapshot& m_objWanted;  ///< what is known in it is wanted
    /// Settings that no answer reports, as somebody says the printer has them.
    const CSnapshot& m_objVouched;
    /// Such settings as the link in use stands on, as it is open.
    const CSnapshot& m_objLinkStands;
    MSettings::Cuts m_iLink = MSettings::Cuts::Nothing;  ///< the link in use; Nothing is USB
};

/// What has to be sent. No steps when there is nothing to do.
///
/// Commands that cut the link in use come last, and of these the one behind which nobody knows
/// where the printer is.
CWritePlan Make(const Ends& p_objEnds);

/// Everything that is reported and stays what it is until somebody changes it.
CWritePlan::Rows Lasting();

/// Takes everything that is known in p_objRead and that the plan does not carry into what was
/// before and is to be afterwards.
void TakeOthers(const CSnapshot& p_objRead, CWritePlan& p_objPlan);

/// Settings that no answer reports and that the plan has to send, of which nobody says what they
/// are to be.
CWritePlan::Rows Missing(const CWritePlan& p_objPlan);

/// What the plan changes of that on which the link in use stands.
CWritePlan::Rows LinkChanges(const CWritePlan& p_objPlan, const Ends& p_objEnds);

/// Settings that travel with what is wanted, and of which the printer has told no value of theirs:
/// they could not be sent back.
CWritePlan::Rows Unreadable(const CWritePlan& p_objPlan);

/// Whether both hold the very same fields of a setting; "-000" is not "+000". What fills a text up
/// is no part of it. Both hold a value of the setting.
bool HoldSameFields(const MSettings::Row& p_objRow, const CSnapshot& p_objOne,
                    const CSnapshot& p_objOther);

}  // namespace MWritePlan
