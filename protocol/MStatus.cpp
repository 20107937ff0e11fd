#include "protocol/MStatus.h"

#include <algorithm>
#include <array>

namespace {

struct Status {
    std::string_view m_strCode;
    std::string_view m_strText;
    bool m_bError = false;
};

constexpr std::string_view NoTextCode = "40";

// The blanks before "Save Mode" belong to the text.
constexpr bool Error = true;

constexpr std::array<Status, 24> Statuses{{
    {"00", "ON LINE"},
    {"01", "Head Open (ON LINE)"},
    {"02", "On Running"},
    {"04", "PAUSE"},
    {"05", "Peel off waiting"},
    {"06", "Command Error", Error},
    {"07", "Rs232c Error", Error},
    {"11", "Paper JAM", Error},
    {"12", "Cutter Error", Error},
    {"13", "Paper Error", Error},
    {"14", "NO RIBBON", Error},
    {"15", "Head Open Error", Error},
    {"17", "Thermal head Error", Error},
    {"18", "Thermal head Temp Error", Error},
    {"21", "Ribbon Error", Error},
    {"22", "Thermistor Connector omission", Error},
    {"30", "The stacked form is full.", Error},
    {"31", "Stacker Power OFF", Error},
    {NoTextCode, ""},
    {"41", "ON LINE"},
    {"50", "Flash Memory Write Error", Error},
    {"51", "Flash Memory Format Error", Error},
    {"54", "Flash Memory Empty", Error},
    {"55", "  Save Mode"},
}};

const Status* Find(std::string_view p_strCode) {
    const auto* const objFound = std::ranges::find(Statuses, p_strCode, &Status::m_strCode);
    return objFound == Statuses.end() ? nullptr : objFound;
}

}  // namespace

namespace MStatus {

bool StatusText(std::string_view p_strCode, std::string& p_strText, bool& p_bReceived) {
    const Status* const objFound = Find(p_strCode);
    if (objFound == nullptr) {
        return true;
    }
    p_bReceived = true;
    if (p_strCode != NoTextCode) {
        p_strText = objFound->m_strText;
    }
    return true;
}

bool IsError(std::string_view p_strCode) {
    const Status* const objFound = Find(p_strCode);
    return objFound == nullptr || objFound->m_bError;
}

}  // namespace MStatus
