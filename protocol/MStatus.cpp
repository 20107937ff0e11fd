#include "protocol/MStatus.h"

#include <algorithm>
#include <array>

namespace {

struct Status {
    std::string_view m_strCode;
    std::string_view m_strText;
};

constexpr std::string_view NoTextCode = "40";

// The blanks before "Save Mode" belong to the text.
constexpr std::array<Status, 24> Statuses{{
    {"00", "ON LINE"},
    {"01", "Head Open (ON LINE)"},
    {"02", "On Running"},
    {"04", "PAUSE"},
    {"05", "Peel off waiting"},
    {"06", "Command Error"},
    {"07", "Rs232c Error"},
    {"11", "Paper JAM"},
    {"12", "Cutter Error"},
    {"13", "Paper Error"},
    {"14", "NO RIBBON"},
    {"15", "Head Open Error"},
    {"17", "Thermal head Error"},
    {"18", "Thermal head Temp Error"},
    {"21", "Ribbon Error"},
    {"22", "Thermistor Connector omission"},
    {"30", "The stacked form is full."},
    {"31", "Stacker Power OFF"},
    {NoTextCode, ""},
    {"41", "ON LINE"},
    {"50", "Flash Memory Write Error"},
    {"51", "Flash Memory Format Error"},
    {"54", "Flash Memory Empty"},
    {"55", "  Save Mode"},
}};

}  // namespace

namespace MStatus {

bool StatusText(std::string_view p_strCode, std::string& p_strText, bool& p_bReceived) {
    const auto* const objFound =
        std::find_if(Statuses.begin(), Statuses.end(),
                     [&](const Status& p_objStatus) { return p_objStatus.m_strCode == p_strCode; });
    if (objFound == Statuses.end()) {
        return true;
    }
    p_bReceived = true;
    if (p_strCode != NoTextCode) {
        p_strText = objFound->m_strText;
    }
    return true;
}

}  // namespace MStatus
