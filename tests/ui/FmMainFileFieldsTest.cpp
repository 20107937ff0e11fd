#include "tests/files/MSettingsFields.h"
#include "tests/golden/MGolden.h"
#include "tests/ui/CFilesFixture.h"

#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace {

using FmMainFileFieldsTest = CFilesFixture;

const std::string Blank(9, '\xFF');
const std::string HostLine =
    MGolden::File({MGolden::With(MGolden::Dhcp, {{"DhcpClientHost", "caf\xE9 17" + Blank}})});
constexpr const char* RangeMessage = "It is a value that exceeds the useful range. ";

TEST_F(FmMainFileFieldsTest, TheProgramsFolderIsTheOneItLiesIn) {
    EXPECT_EQ(m_objPlatform.Interfaces().m_strProgramFolder,
              QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString());
}

TEST_F(FmMainFileFieldsTest, AHostNameIsSavedOneByteACharacterAndComesBack) {
    m_objWindow.BringToFront("txtDhcpName");
    m_objWindow.Get<QLineEdit>("txtDhcpName").setText(QStringLiteral("caf\u00E9 17"));
    EXPECT_EQ(Press("btnLanSave", Enter("host")), Boxes{Normal()});
    EXPECT_TRUE(m_objFolder.Content("host.dt2").ends_with(HostLine));
    m_objWindow.Type("txtDhcpName", "other");
    EXPECT_EQ(Press("btnLanLoad", Enter("host.dt2")), Boxes{Normal()});
    EXPECT_EQ(Shown("txtDhcpName"), QStringLiteral("caf\u00E9 17"));
}

TEST_F(FmMainFileFieldsTest, AHostNameTooLongForALineIsSavedWholeAndRefused) {
    m_objWindow.Type("txtDhcpName", "a-name-of-17-char");
    EXPECT_EQ(Press("btnLanSave", Enter("host")), Boxes{Normal()});
    EXPECT_TRUE(m_objFolder.Content("host.dt2").ends_with(",a-name-of-17-char|}\r\n"));
    m_objWindow.Type("txtDhcpName", "other");
    EXPECT_EQ(Press("btnLanLoad", Enter("host.dt2")), Boxes{Abnormal()});
    EXPECT_EQ(Shown("txtDhcpName"), "other");
}

TEST_F(FmMainFileFieldsTest, APositionThatItsListDoesNotHaveStopsTheParameterPageThere) {
    m_objFolder.Make("odd",
                     MGolden::With(MGolden::Parameters, {{"FontCode", "F"}, {"ZeroStyle", "9"}}) +
                         "\r\n" + MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "025"}}) +
                         "\r\n");
    EXPECT_EQ(Press("btnLoad", Enter("odd")), Boxes{Abnormal()});
    EXPECT_EQ(Shown("cmbFontCode"), "UTF-8");  // comes before the list
    EXPECT_EQ(Shown("cmbZeroCode"), "NO SLASH");
    EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
    EXPECT_EQ(m_objWindow.Form().ItemManager().m_objFeedAdjustment->GetValueString(), "025");
}

TEST_F(FmMainFileFieldsTest, APositionThatItsListDoesNotHaveStopsTheLanPageThere) {
    m_objFolder.Make("odd", "{IP;2,192,168,010,077|}\r\n{IS;9,09100|}\r\n");
    EXPECT_EQ(Press("btnLanLoad", Enter("odd")), Boxes{Abnormal()});
    EXPECT_EQ(Shown("SeIpAddress4"), "77");  // comes before the list
    EXPECT_EQ(Shown("cmbPort"), "ON");
    EXPECT_EQ(Shown("SeSocetPort"), "8000");
    EXPECT_EQ(m_objWindow.Form().ItemManager().m_objSocketPortNumber->GetValueString(), "09100");
}

TEST_F(FmMainFileFieldsTest, ATextThatIsNoNumberEndsAbnormally) {
    m_objFolder.Make("odd", "{IP;2,1.2,168,010,077|}\r\n{IP;3,a.b,000,000,001|}\r\n");
    EXPECT_EQ(Press("btnLanLoad", Enter("odd")), Boxes{Abnormal()});
    EXPECT_EQ(Shown("SeIpAddress4"), "77");
    EXPECT_EQ(Shown("SeGateway4"), "0");
}

TEST_F(FmMainFileFieldsTest, ANumberOutsideItsRangeIsToldAndTheRestIsShown) {
    m_objFolder.Make("odd", MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "501"},
                                                                 {"CutPosAdjustment", "012"}}) +
                                "\r\n");
    EXPECT_EQ(Press("btnLoad", Enter("odd")), (Boxes{Box{RangeMessage}, Normal()}));
    EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
    EXPECT_EQ(Shown("SeCutAdj"), "1.2");
}

TEST_F(FmMainFileFieldsTest, ANegativeAdjustmentThatWasStoredAndIsNotLoadedCannotBeRedrawn) {
    m_objWindow.Type("SeFeedAdj", "-12.5");
    m_objWindow.Type("SeCutAdj", "3.0");
    EXPECT_EQ(Press("btnSave", Enter("negative")), Boxes{Normal()});
    m_objFolder.Make("parameters", std::string(MGolden::Parameters) + "\r\n");
    EXPECT_EQ(Press("btnLoad", Enter("parameters")), Boxes{Abnormal()});
    m_objWindow.Type("SeFeedAdj", "1.0");
    EXPECT_EQ(Press("btnLoad", Enter("negative.dt1")), Boxes{Normal()}) << "it sets them all";
    EXPECT_EQ(Shown("SeFeedAdj"), "-12.5");
    EXPECT_EQ(Shown("SeCutAdj"), "3.0");
}

/// A file that holds every field of its page at one end of its range.
struct GoldenRow {
    const char* m_strTest;
    const char* m_strFile;
    const char* m_strLoad;
    const char* m_strSave;
    std::map<QString, QString> m_strShown;  ///< some of what the page shows then
};

void PrintTo(const GoldenRow& p_objRow, std::ostream* p_objStream) {
    *p_objStream << p_objRow.m_strFile;
}

const std::vector<GoldenRow> GoldenFiles{
    {"ParameterLowest",
     "golden/parameter-lowest.dt1",
     "btnLoad",
     "btnSave",
     {{"cmbSpeed", "2400bps"}, {"SeEuroCode", "20"}, {"SeXAdj", "-99.5"}, {"SeRbnAdjBk", "-15"}}},
    {"ParameterHighest",
     "golden/parameter-highest.dt1",
     "btnLoad",
     "btnSave",
     {{"cmbFontCode", "UTF-8"}, {"SeEuroCode", "FF"}, {"SeXAdj", "99.5"}, {"SeRbnAdjBk", "0"}}},
    {"LanLowest",
     "golden/lan-lowest.dt2",
     "btnLanLoad",
     "btnLanSave",
     {{"SeIpAddress1", "0"}, {"SeSubNet1", "0"}, {"SeSocetPort", "0"}, {"cmbPort", "OFF"}}},
    {"LanHighest",
     "golden/lan-highest.dt2",
     "btnLanLoad",
     "btnLanSave",
     {{"SeIpAddress1", "255"}, {"SeGateway4", "255"}, {"SeSocetPort", "65535"}, {"cmbDhcp", "ON"}}},
};

class FmMainGoldenFilesTest : public CFilesFixture,
                              public ::testing::WithParamInterface<GoldenRow> {};

TEST_P(FmMainGoldenFilesTest, GoesThroughThePageAndComesOutTheSame) {
    const std::string strContent = MSettingsFields::Content(GetParam().m_strFile);
    m_objFolder.Make("golden", strContent);
    EXPECT_EQ(Press(GetParam().m_strLoad, Enter("golden")), Boxes{Normal()});
    for (const auto& [strName, strValue] : GetParam().m_strShown) {
        EXPECT_EQ(Shown(strName), strValue) << strName.toStdString();
    }
    const auto fnAllFiles = [](QFileDialog& p_objDialog) {
        CFileDialogDriver(p_objDialog).ChooseFilter(1);
        CFileDialogDriver(p_objDialog).TypeAndEnter("copy");
    };
    EXPECT_EQ(Press(GetParam().m_strSave, fnAllFiles), Boxes{Normal()});
    EXPECT_EQ(m_objFolder.Content("copy"), strContent);
}

INSTANTIATE_TEST_SUITE_P(, FmMainGoldenFilesTest, ::testing::ValuesIn(GoldenFiles),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strTest; });

}  // namespace
