#include "flows/CSessionView.h"

#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class CHeldView : public CFakeExchangeView {
public:
    std::vector<bool> m_bHeld;

    void HoldInterface(bool p_bHeld) override { m_bHeld.push_back(p_bHeld); }
};

TEST(CSessionViewTest, WhileItIsBusyTheButtonsAreDisabledAndTheInterfaceIsHeld) {
    CHeldView objView;
    CFakeMessageBox objBoxes;  // none is expected
    CSessionView objSession(objView, objBoxes);
    objSession.OnBusy(true);
    objSession.OnBusy(false);
    EXPECT_EQ(objView.m_bHeld, (std::vector<bool>{true, false}));
    EXPECT_EQ(objView.m_bEnabled, (std::vector<bool>{false, true}));
}

}  // namespace
