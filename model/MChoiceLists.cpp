#include "model/MChoiceLists.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace {

// "TRANSFR" and "MANTE.CNT" are shown as they stand here.
// clang-format off
const std::vector<MChoiceLists::List> ChoiceLists{
    {"diag-print-type", {"DIRECT", "TRANSFR"}},
    {"test-print-pattern", {"FEED", "SLANT LINE(1DOT)", "SLANT LINE(3DOT)", "CHARACTERS", "BARCODE", "FACTORY TEST"}},
    {"test-print-speed", {"2\"/sec", "4\"/sec"}},
    {"test-print-sensor", {"NONE", "REFLECT.", "TRANS."}},
    {"test-print-cut", {"NO CUT", "WITH CUT", "PEEL OFF"}},
    {"test-print-type", {"DIRECT", "TRANSFR"}},
    {"threshold-sensor", {"REFLECT.", "TRANS."}},
    {"ram-clear-mode", {"PARAMETER", "MANTE.CNT"}},
    {"ram-clear-destination", {"", "JA", "CN", "QP", "QQ"}, MChoiceLists::NoSelection},
};
// clang-format on

}  // namespace

namespace MChoiceLists {

const std::vector<List>& All() {
    return ChoiceLists;
}

const List& Get(std::string_view p_strName) {
    const auto objFound = std::ranges::find(ChoiceLists, p_strName, &List::m_strName);
    if (objFound == ChoiceLists.end()) {
        throw std::logic_error("there is no choice \"" + std::string(p_strName) + "\"");
    }
    return *objFound;
}

}  // namespace MChoiceLists
