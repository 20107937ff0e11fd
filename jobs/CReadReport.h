#pragma once

#include "link/CFailure.h"
#include "model/CSnapshot.h"

#include <cstdint>
#include <set>
#include <string>

/// What reading settings from a printer has brought.
struct CReadReport {
    /// Why a setting of the report has no value.
    enum class Why : std::uint8_t {
        Known,        ///< it has one
        NotReported,  ///< no answer reports it
        NotAsked,     ///< nobody has asked for its group
        Failed,       ///< the answer that reports it was not had: m_objFailure
        Unreadable,   ///< it was had, but what it holds is no value of the setting
    };

    CSnapshot m_objSnapshot;               ///< the settings that were read are known in it
    std::set<std::int16_t> m_iAsked{};     ///< the groups that were wanted (MAnswer::Group)
    std::set<std::int16_t> m_iAnswered{};  ///< those whose answer was had
    CFailure m_objFailure{};               ///< what has ended it early; None when nothing has
    /// The status that the printer has told in place of the answer that ended it, as
    /// CStatusReport has it; empty when it has told none, and on USB.
    std::string m_strStatusCode{};
    std::string m_strStatusText{};
    bool m_bSent = false;  ///< a request has gone out

    /// p_objRow is a row of MSettings::All().
    [[nodiscard]] Why WhyUnknown(const MSettings::Row& p_objRow) const;
};
