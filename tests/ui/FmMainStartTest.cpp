#include "tests/ui/CFormFixture.h"
#include "tests/ui/MGoldenPage.h"

#include <QTabWidget>
#include <QTest>

#include <vector>

namespace {

using FmMainStartTest = CFormFixture;

struct Range {
    const char* m_strName;
    const char* m_strMax;
    const char* m_strBelowMax;   ///< one step below the maximum
    const char* m_strBeyondMax;  ///< null: its length does not let anybody type that
    const char* m_strMin;
    const char* m_strAboveMin;   ///< one step above the minimum
    const char* m_strBeyondMin;  ///< null: no hexadecimal digits write that
};

// clang-format off
const std::map<QString, QString> OtherStartValues{
    {"cmbRamClear", "PARAMETER"},
    {"cmbDestination", ""},
    {"cmbThresholdCalib", "REFLECT."},
    {"SeIssueCount", "1"},
    {"SeLabelLen", "760"},
    {"cmbType", "NO CUT"},
    {"cmbPrtType", "DIRECT"},
    {"cmbSensor", "NONE"},
    {"cmbPrintSpeed", "2\"/sec"},
    {"cmbPattern", "FEED"},
    {"cmbDiagPrint", "DIRECT"},
    {"SeIpAddress1", "192"},
    {"SeIpAddress2", "168"},
    {"SeIpAddress3", "10"},
    {"SeIpAddress4", "20"},
    {"SeSubNet1", "255"},
    {"SeSubNet2", "255"},
    {"SeSubNet3", "255"},
    {"SeSubNet4", "0"},
    {"SeGateway1", "0"},
    {"SeGateway2", "0"},
    {"SeGateway3", "0"},
    {"SeGateway4", "0"},
    {"cmbPort", "ON"},
    {"SeSocetPort", "8000"},
    {"cmbDhcp", "OFF"},
    {"txtDhcpName", ""},
};

const std::vector<Range> Ranges{
    {"SeFowardPosition", "5.0", "4.5", "5.5", "-5.0", "-4.5", "-5.5"},
    {"SeCode1", "FF", "FE", "100", "00", "01", nullptr},
    {"SeCode2", "FF", "FE", "100", "00", "01", nullptr},
    {"SeCode3", "FF", "FE", "100", "00", "01", nullptr},
    {"SeEuroCode", "FF", "FE", "100", "20", "21", "1F"},
    {"SeFeedAdj", "50.0", "49.9", "50.1", "-50.0", "-49.9", "-50.1"},
    {"SeCutAdj", "50.0", "49.9", "50.1", "-50.0", "-49.9", "-50.1"},
    {"SeBackAdj", "9.5", "9.4", "9.6", "-9.5", "-9.4", "-9.6"},
    {"SeXAdj", "99.5", "99.0", "99.6", "-99.5", "-99.0", "-99.6"},
    {"SeToneAdjT", "10", "9", "11", "-10", "-9", "-11"},
    {"SeToneAdjD", "10", "9", "11", "-10", "-9", "-11"},
    {"SeRbnAdjFw", "0", "-1", "1", "-15", "-14", "-16"},
    {"SeRbnAdjBk", "0", "-1", "1", "-15", "-14", "-16"},
    {"SeThresholdR", "4.0", "3.9", "4.1", "0.0", "0.1", "-0.1"},
    {"SeThresholdT", "4.0", "3.9", "4.1", "0.0", "0.1", "-0.1"},
    {"SeIssueCount", "5000", "4999", "5001", "1", "2", "0"},
    {"SeLabelLen", "9999", "9998", nullptr, "100", "101", "99"},
    {"SeIpAddress1", "255", "254", "256", "0", "1", "-1"},
    {"SeIpAddress2", "255", "254", "256", "0", "1", "-1"},
    {"SeIpAddress3", "255", "254", "256", "0", "1", "-1"},
    {"SeIpAddress4", "255", "254", "256", "0", "1", "-1"},
    {"SeSubNet1", "255", "254", "256", "0", "1", "-1"},
    {"SeSubNet2", "255", "254", "256", "0", "1", "-1"},
    {"SeSubNet3", "255", "254", "256", "0", "1", "-1"},
    {"SeSubNet4", "255", "254", "256", "0", "1", "-1"},
    {"SeGateway1", "255", "254", "256", "0", "1", "-1"},
    {"SeGateway2", "255", "254", "256", "0", "1", "-1"},
    {"SeGateway3", "255", "254", "256", "0", "1", "-1"},
    {"SeGateway4", "255", "254", "256", "0", "1", "-1"},
    {"SeSocetPort", "65535", "65534", "65536", "0", "1", "-1"},
};
// clang-format on

/// Those, and what the parameter page shows.
std::map<QString, QString> StartValues() {
    std::map<QString, QString> strValues = OtherStartValues;
    for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
        strValues[objControl.m_strName] = objControl.m_strDefault;
    }
    return strValues;
}

TEST_F(FmMainStartTest, ComIsChosenAndSetupCanBePressed) {
    EXPECT_EQ(Shown("cmbInterface"), "COM");
    EXPECT_EQ(m_objWindow.Form().Interface().GetActiveInterface(), 0);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

TEST_F(FmMainStartTest, TheParameterTabIsInFront) {
    EXPECT_EQ(m_objWindow.Get<QTabWidget>("SSTab1").currentIndex(), 0);
}

TEST_F(FmMainStartTest, EveryFieldShowsItsDefault) {
    const auto strShown = m_objWindow.ShownFields();
    EXPECT_EQ(strShown.size(), StartValues().size());
    for (const auto& [strName, strValue] : StartValues()) {
        ASSERT_EQ(strShown.count(strName), 1U) << strName.toStdString();
        EXPECT_EQ(strShown.at(strName), strValue) << strName.toStdString();
    }
}

TEST_F(FmMainStartTest, NoDestinationIsChosen) {
    EXPECT_EQ(m_objWindow.List("cmbDestination").currentIndex(), -1);
}

TEST_F(FmMainStartTest, NothingIsOpenedAndNothingSent) {
    EXPECT_EQ(m_objCalls.All(), std::vector<std::string>());
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(FmMainStartTest, EverySpinEditGoesToItsBoundsAndNoFurther) {
    m_objWindow.Choose("cmbCode", 3);  // lets the three codes be edited
    for (const Range& objRow : Ranges) {
        SCOPED_TRACE(objRow.m_strName);
        UCSpinEdit& Se = m_objWindow.Field(objRow.m_strName);
        const auto Enter = [&](const char* p_strText) {
            m_objWindow.Type(objRow.m_strName, p_strText);
            QTest::keyClick(&Se, Qt::Key_Tab);
            EXPECT_FALSE(Se.hasFocus());
            return Shown(objRow.m_strName);
        };
        const auto Step = [&](Qt::Key p_iKey) {
            Se.setFocus();
            QTest::keyClick(&Se, p_iKey);
            return Shown(objRow.m_strName);
        };
        EXPECT_EQ(Enter(objRow.m_strMax), objRow.m_strMax);
        EXPECT_EQ(Step(Qt::Key_Up), objRow.m_strMax);
        EXPECT_EQ(Step(Qt::Key_Down), objRow.m_strBelowMax);
        EXPECT_EQ(Step(Qt::Key_Up), objRow.m_strMax);
        if (objRow.m_strBeyondMax != nullptr) {
            m_objBoxes.Expect("It is a value that exceeds the useful range. ");
            EXPECT_EQ(Enter(objRow.m_strBeyondMax), objRow.m_strMax);
        }
        EXPECT_EQ(Enter(objRow.m_strMin), objRow.m_strMin);
        EXPECT_EQ(Step(Qt::Key_Down), objRow.m_strMin);
        EXPECT_EQ(Step(Qt::Key_Up), objRow.m_strAboveMin);
        EXPECT_EQ(Step(Qt::Key_Down), objRow.m_strMin);
        if (objRow.m_strBeyondMin != nullptr) {
            m_objBoxes.Expect("It is a value that exceeds the useful range. ");
            EXPECT_EQ(Enter(objRow.m_strBeyondMin), objRow.m_strMin);
        }
        m_objBoxes.Verify();
    }
}

TEST_F(FmMainStartTest, EverySpinEditHasARange) {
    std::vector<QString> strNames;
    for (const auto* const Se : m_objWindow.Form().findChildren<UCSpinEdit*>()) {
        strNames.push_back(Se->objectName());
    }
    EXPECT_EQ(strNames.size(), Ranges.size());
    for (const Range& objRow : Ranges) {
        EXPECT_EQ(std::count(strNames.begin(), strNames.end(), QString(objRow.m_strName)), 1)
            << objRow.m_strName;
    }
}

TEST_F(FmMainStartTest, CodesAndAddressPartsHaveNoButtons) {
    for (const auto* const Se : m_objWindow.Form().findChildren<UCSpinEdit*>()) {
        const QString strName = Se->objectName();
        const bool bCovered = strName.startsWith("SeCode") || strName.startsWith("SeIpAddress") ||
                              strName.startsWith("SeSubNet") || strName.startsWith("SeGateway");
        EXPECT_EQ(Se->buttonSymbols() == QAbstractSpinBox::NoButtons, bCovered)
            << strName.toStdString();
    }
}

}  // namespace
