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
    {"sensor-adjust-step", {"REFLECT", "TRANS", "PAPER END"}},
    {"threshold-sensor", {"REFLECT.", "TRANS."}},
    {"ram-clear-mode", {"PARAMETER", "MANTE.CNT"}},
    {"ram-clear-destination", {"", "JA", "CN", "QP", "QQ"}, MChoiceLists::NoSelection},
};

const std::vector<MChoiceLists::Number> Numbers{
    {"test-print-issue-count", 1, {1, 5000, 1}},
    {"test-print-label-length", 760, {100, 9999, 1, 4}},
};
// clang-format on

std::logic_error Missing(std::string_view p_strName) {
    return std::logic_error("there is no choice \"" + std::string(p_strName) + "\"");
}

}  // namespace

namespace MChoiceLists {

const std::vector<List>& All() {
    return ChoiceLists;
}

const List& Get(std::string_view p_strName) {
    const List* const objFound = Find(p_strName);
    if (objFound == nullptr) {
        throw Missing(p_strName);
    }
    return *objFound;
}

const List* Find(std::string_view p_strName) {
    const auto objFound = std::ranges::find(ChoiceLists, p_strName, &List::m_strName);
    return objFound == ChoiceLists.end() ? nullptr : &*objFound;
}

const Number& GetNumber(std::string_view p_strName) {
    const auto objFound = std::ranges::find(Numbers, p_strName, &Number::m_strName);
    if (objFound == Numbers.end()) {
        throw Missing(p_strName);
    }
    return *objFound;
}

}  // namespace MChoiceLists
