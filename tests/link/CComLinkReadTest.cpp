#include "flows/CReadWriteFlow.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/link/CComLinkFixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// READ over the serial port from end to end.

namespace {

using Texts = std::vector<std::string>;

class CComLinkReadTest : public CComLinkFixture {
protected:
    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objSession, m_objMessageBox, m_objParameterPage,
                             m_objLanPage};
};

TEST_F(CComLinkReadTest, ReadTakesItsThreeGroupsCharacterByCharacter) {
    OpenQuietly();
    m_objPort.m_fnAnswer = CScriptedPrinter::Behave;
    m_objParameterPage.m_fnRefresh = [this] {
        for (const std::int16_t iGroup : std::vector<std::int16_t>{0, 1, 4}) {
            EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup)) << iGroup;
        }
        return true;
    };
    m_objFlow.Read();
    EXPECT_EQ(m_objPort.Sent(), "{Z5;0|}{Z5;1|}{Z5;4|}");
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
    EXPECT_EQ(m_objView.m_bEnabled, (std::vector<bool>{false, true}));
}

TEST_F(CComLinkReadTest, LanReadTakesItsGroup) {
    OpenQuietly();
    m_objEventLoop.After(100, [this] { m_objPort.SetClearToSend(false); });
    m_objLanPage.m_fnRefresh = [this] {
        EXPECT_EQ(Stored(3), MWire::Fields(3));
        return true;
    };
    m_objPort.m_fnAnswer = CScriptedPrinter::Behave;
    EXPECT_EQ(MWire::Settings(3).size(), 96U);
    m_objFlow.LanRead();
    EXPECT_EQ(m_objPort.Sent(), "{Z5;3|}");
    EXPECT_EQ(m_objLanPage.m_iRefreshes, 1);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"OFF LINE"});
}

TEST_F(CComLinkReadTest, ASilentPrinterIsNotWaitedForAndTellsNothing) {
    OpenQuietly();
    m_objFlow.Read();
    EXPECT_EQ(m_objPort.Sent(), "{Z5;0|}{Z5;1|}{Z5;4|}");
    ExpectNothingStored();
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CComLinkReadTest, APortThatIsNotOpenEndsReadQuietly) {
    m_objFlow.Read();
    EXPECT_TRUE(m_objPort.m_strWrites.empty());
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
    EXPECT_EQ(m_objView.m_bEnabled, (std::vector<bool>{false, true}));
}

}  // namespace
