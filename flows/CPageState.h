#pragma once

#include "flows/CPageNote.h"

#include <cstdint>
#include <optional>
#include <string>

/// What a page of settings holds.
struct CPageState {
    enum class Origin : std::uint8_t {
        Defaults,
        Read,  ///< what the printer has answered
        File,  ///< what stands in m_strFile
        Sent,  ///< what was sent to the printer, which has kept of it what it likes
    };

    Origin m_iOrigin = Origin::Defaults;
    std::string m_strFile{};
    int m_iChanged = 0;      ///< fields that differ from what was last read, or from the defaults
    bool m_bEdited = false;  ///< the fields are not any more what came from the file, or was sent
    std::optional<CPageNote> m_objEnded{};  ///< the latest flow, when it has not gone as it should
};
