#include "tests/golden/MGolden.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_widgets/CFileDialogDriver.h"
#include "tests/platform_widgets/CModalPerson.h"
#include "tests/ui/CPrinterFixture.h"

#include <QFileDialog>
#include <QSettings>
#include <QTest>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace {

/// A button that opens a file dialog, and a field of its page to see by what it does.
struct FileButton {
    const char* m_strButton;
    bool m_bLoads;
    const char* m_strFile;
    std::string m_strContent;  ///< of the file, with the field changed
    const char* m_strField;
    const char* m_strChanged;

    friend std::ostream& operator<<(std::ostream& p_objStream, const FileButton& p_objButton) {
        return p_objStream << p_objButton.m_strButton;
    }
};

const std::string ParameterFile = MGolden::File(
    {MGolden::Parameters,
     MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "125"}})});
const std::string LanFile = MGolden::File(
    {MGolden::IpAddress, MGolden::Gateway, MGolden::SubnetMask,
     MGolden::With(MGolden::SocketPort, {{"SocketPortNumber", "09100"}}), MGolden::Dhcp});

const std::vector<FileButton> Buttons{
    {"btnSave", false, "settings.dt1", ParameterFile, "SeFeedAdj", "-12.5"},
    {"btnLoad", true, "settings.dt1", ParameterFile, "SeFeedAdj", "-12.5"},
    {"btnLanSave", false, "settings.dt2", LanFile, "SeSocetPort", "9100"},
    {"btnLanLoad", true, "settings.dt2", LanFile, "SeSocetPort", "9100"},
};

constexpr int LookEveryMs = 5;

/// SAVE and LOAD pressed inside of a flow that leaves the buttons enabled. Time passes only while
/// the file dialog is open: more than any limit or pause lasts.
class FmMainFilesDuringFlowTest : public CPrinterFixture,
                                  public ::testing::WithParamInterface<FileButton> {
protected:
    using DialogAction = std::function<void(CFileDialogDriver&)>;

    FmMainFilesDuringFlowTest()
        : CPrinterFixture(Pace::ByHand) {
        // The toolkit's file dialog remembers how it looked; here no longer than the test runs.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(m_objScratch.Path()));
    }

    void SetUp() override {
        CPrinterFixture::SetUp();
        // Late enough that the answer is still under way when the dialog opens.
        StartPrinter({"--delay", "600"});
        ConnectToPrinter();
        if (GetParam().m_bLoads) {
            m_objFolder.Make(GetParam().m_strFile, GetParam().m_strContent);
        } else {
            m_objWindow.Type(GetParam().m_strField, GetParam().m_strChanged);
        }
        m_strBefore = m_objWindow.ShownFields();
    }

    /// Starts the flow and, once it is where it ought to be, presses the row's button inside of
    /// it and acts in the dialog. Returns when both are over.
    void PressInside(const char* p_strFlow, const std::function<bool()>& p_fnReached,
                     const DialogAction& p_fnAction) {
        const CModalPerson objPerson([&](QWidget& p_objModal) {
            m_objHandClock.Advance(LongerThanAnyWaitMs);
            CFileDialogDriver objDriver(dynamic_cast<QFileDialog&>(p_objModal));
            p_fnAction(objDriver);
        });
        bool bFlowRuns = true;
        bool bPressedInside = false;
        QTimer objLook;
        objLook.callOnTimeout([&] {
            if (p_fnReached()) {
                objLook.stop();
                EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
                m_objWindow.Click(GetParam().m_strButton);
                bPressedInside = bFlowRuns;
            }
        });
        objLook.start(LookEveryMs);
        m_objWindow.Click(p_strFlow);
        bFlowRuns = false;
        EXPECT_TRUE(bPressedInside);
        EXPECT_EQ(objPerson.Count(), 1);
        m_objBoxes.Verify();
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }

    /// Inside of LAN SET, when it has come to its second command.
    void PressInsideOfLanSet(const DialogAction& p_fnAction) {
        const auto fnSecond = [this] { return Sent().size() == 2; };
        PressInside("btnLanSet", fnSecond, p_fnAction);
    }

    /// In the second's pause of the head check, after its answer.
    void PressInsideOfHeadCheck(const DialogAction& p_fnAction) {
        const auto fnPause = [this] {
            return !Shown("lblHeadCheck").isEmpty() && m_objWindow.DisabledButtons().isEmpty();
        };
        PressInside("btnHeadCheck", fnPause, p_fnAction);
    }

    [[nodiscard]] DialogAction Accept() const {
        return [this](CFileDialogDriver& p_objDriver) { p_objDriver.TypeAndEnter(FilePath()); };
    }
    [[nodiscard]] DialogAction Cancel() const {
        return [this](CFileDialogDriver& p_objDriver) {
            p_objDriver.Type(FilePath());
            p_objDriver.Cancel();
        };
    }

    /// That is all: what comes next stands right behind it.
    void ExpectToHaveSent(std::vector<std::string> p_strCommands) {
        const std::size_t iCount = p_strCommands.size();
        EXPECT_TRUE(
            CSimulatorProcess::WaitUntil([&] { return AnswerCount() == iCount; }, PatienceMs));
        m_objWindow.Click("btnGetStatus");
        EXPECT_EQ(Shown("lblStatus"), "ON LINE");
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
        p_strCommands.emplace_back("{WS|}");
        // An answer that was still on its way may have passed for this one's.
        EXPECT_TRUE(m_objPrinter.WaitForCommands(p_strCommands.size(), PatienceMs));
        EXPECT_EQ(Sent(), p_strCommands);
    }

    void ExpectSavedOrLoaded() {
        EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{GetParam().m_strFile});
        EXPECT_EQ(m_objFolder.Content(GetParam().m_strFile), GetParam().m_strContent);
        auto strExpected = m_strBefore;
        strExpected[GetParam().m_strField] = GetParam().m_strChanged;
        EXPECT_EQ(m_objWindow.ShownFields(), strExpected);
    }

    void ExpectNeitherSavedNorLoaded() {
        EXPECT_EQ(m_objFolder.Names(), GetParam().m_bLoads
                                           ? std::vector<std::string>{GetParam().m_strFile}
                                           : std::vector<std::string>());
        EXPECT_EQ(m_objWindow.ShownFields(), m_strBefore);
    }

    /// Of the page as it was when LAN SET began.
    static std::vector<std::string> AllOfLanSet() {
        std::vector<std::string> strCommands = LanSetCommands();
        if (std::string(GetParam().m_strButton) == "btnLanSave") {
            strCommands[3] = "{IS;1,09100|}";
        }
        return strCommands;
    }

private:
    static constexpr std::int64_t LongerThanAnyWaitMs = 6000;

    [[nodiscard]] QString FilePath() const {
        return QString::fromStdString(m_objFolder.Path(GetParam().m_strFile));
    }

    CFolder m_objScratch;
    CFolder m_objFolder;
    std::map<QString, QString> m_strBefore;
};

TEST_P(FmMainFilesDuringFlowTest, LanSetGoesOnWhenAFileHasBeenChosenInsideOfIt) {
    m_objBoxes.Expect("Normal termination");
    PressInsideOfLanSet(Accept());
    ExpectSavedOrLoaded();
    ExpectToHaveSent(AllOfLanSet());
}

TEST_P(FmMainFilesDuringFlowTest, LanSetGoesOnAlsoWhenTheDialogWasCancelled) {
    PressInsideOfLanSet(Cancel());
    ExpectNeitherSavedNorLoaded();
    ExpectToHaveSent(AllOfLanSet());
}

TEST_P(FmMainFilesDuringFlowTest, AHeadChecksPauseEndsWhenAFileIsChosenInIt) {
    m_objBoxes.Expect("Normal termination");
    PressInsideOfHeadCheck(Accept());
    ExpectSavedOrLoaded();
    EXPECT_EQ(Shown("lblHeadCheck"), "ON LINE");
    ExpectToHaveSent({"{HD001,A|}"});
}

TEST_P(FmMainFilesDuringFlowTest, AHeadChecksPauseEndsAlsoWhenTheDialogIsCancelled) {
    PressInsideOfHeadCheck(Cancel());
    ExpectNeitherSavedNorLoaded();
    EXPECT_EQ(Shown("lblHeadCheck"), "ON LINE");
    ExpectToHaveSent({"{HD001,A|}"});
}

INSTANTIATE_TEST_SUITE_P(, FmMainFilesDuringFlowTest, ::testing::ValuesIn(Buttons),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strButton; });

}  // namespace
