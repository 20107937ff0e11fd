#pragma once

#include "model/CSnapshot.h"

#include <map>
#include <set>
#include <string>
#include <string_view>

/// Settings that came from somewhere: a file, a printer, the defaults.
struct CLoadedSettings {
    std::string m_strSource;  ///< as the command line has named it
    CSnapshot m_objSnapshot;

    /// Why a setting is not known, by its name; "" holds for those without a text of their own.
    std::map<std::string, std::string, std::less<>> m_strWhyUnknown;

    /// The names of those of which a printer has told no value, although its answer was there.
    std::set<std::string, std::less<>> m_strUnreadable{};

    /// A printer was sent something to have them.
    bool m_bSent = false;

    /// Why p_objRow is not known; empty when it is.
    [[nodiscard]] std::string WhyUnknown(const MSettings::Row& p_objRow) const {
        if (m_objSnapshot.IsKnown(p_objRow)) {
            return {};
        }
        auto objFound = m_strWhyUnknown.find(p_objRow.m_strName);
        if (objFound == m_strWhyUnknown.end()) {
            objFound = m_strWhyUnknown.find("");
        }
        return objFound != m_strWhyUnknown.end() ? objFound->second : "not known";
    }
};
