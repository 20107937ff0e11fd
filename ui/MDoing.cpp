#include "ui/MDoing.h"

#include "flows/CLineTeller.h"
#include "ui/CPageTeller.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace {

using Page = CPageTeller::Page;

struct Named {
    std::string_view m_strButton;
    const char* m_strName;
    Page m_iPage;
};

// clang-format off
constexpr std::array<Named, 13> Names{{
    {"btnRead", "READ", Page::Parameter},
    {"btnSet", "SET", Page::Parameter},
    {"btnLanRead", "LAN READ", Page::Lan},
    {"btnLanSet", "LAN SET", Page::Lan},
    {"btnGetStatus", "GET STATUS", Page::Maintenance},
    {"btnHeadCheck", "head check", Page::Maintenance},
    {"btnRamClear", "RAM clear", Page::Maintenance},
    {"btnThresholdCalib", "threshold calibration", Page::Maintenance},
    {"btnReflect", "sensor adjustment, step 1", Page::Maintenance},
    {"btnTrans", "sensor adjustment, step 2", Page::Maintenance},
    {"btnPaperEnd", "sensor adjustment, step 3", Page::Maintenance},
    {"btnTestPrint", "test print", Page::Maintenance},
    {"btnDiagPrint", "diagnostic print", Page::Maintenance},
}};
// clang-format on

}  // namespace

std::vector<MButtonHandlers::Row> MDoing::Told(std::vector<MButtonHandlers::Row> p_objRows,
                                               CLineTeller& p_objLine, CPageTeller& p_objPages) {
    for (MButtonHandlers::Row& objRow : p_objRows) {
        const auto* const objNamed =
            std::ranges::find(Names, std::string_view(objRow.m_strButton), &Named::m_strButton);
        if (objNamed == Names.end()) {
            continue;
        }
        objRow.m_fnHandler = [fnHandler = std::move(objRow.m_fnHandler), objNamed, &p_objLine,
                              &p_objPages] {
            p_objPages.Begin(objNamed->m_iPage);
            const CLineTeller::Doing objDoing(p_objLine, objNamed->m_strName);
            fnHandler();
            p_objPages.End(objNamed->m_iPage, objNamed->m_strName, objDoing.Failure());
        };
    }
    return p_objRows;
}
