#include "platform/qt/CQtStateLock.h"

#include "tests/platform_qt/CFolder.h"
#include "tests/platform_qt/CForkedProcess.h"

#include <gtest/gtest.h>

namespace {

TEST(CQtStateLockTest, IsHadByOneProgramUntilThatEnds) {
    const CFolder objFolder;
    const std::string strPath = objFolder.Path("a.lock");
    std::string strWhy;
    bool bHeld = false;
    CQtStateLock* objInside = nullptr;
    CForkedProcess objOther([&] {
        objInside = new CQtStateLock;  // nobody gives it back
        return objInside->Take(strPath, "other", strWhy, bHeld);
    });
    ASSERT_TRUE(objOther.IsDone());
    EXPECT_FALSE(CQtStateLock().Take(strPath, "mine", strWhy, bHeld));
    EXPECT_TRUE(bHeld);
    EXPECT_NE(strWhy.find("process " + std::to_string(objOther.Number())), std::string::npos)
        << strWhy;
    objOther.Kill();
    {
        CQtStateLock objLock;
        EXPECT_TRUE(objLock.Take(strPath, "mine", strWhy, bHeld));
    }
    EXPECT_EQ(objFolder.Names(), std::vector<std::string>{});
}

TEST(CQtStateLockTest, WhereNoFileCanBeItIsNoOthersLock) {
    std::string strWhy;
    bool bHeld = true;
    EXPECT_FALSE(CQtStateLock().Take("/no/such/folder/a.lock", "mine", strWhy, bHeld));
    EXPECT_FALSE(bHeld);
    EXPECT_NE(strWhy, "");
}

}  // namespace
