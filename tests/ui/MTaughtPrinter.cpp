#include "tests/ui/MTaughtPrinter.h"

#include "tests/ui/MGoldenPage.h"

#include <gtest/gtest.h>

namespace MTaughtPrinter {

void ExpectPage(CMainWindow& p_objWindow) {
    for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
        EXPECT_EQ(p_objWindow.Shown(objControl.m_strName), objControl.m_strTaught)
            << objControl.m_strName;
    }
}

}  // namespace MTaughtPrinter
