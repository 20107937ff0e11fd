#include "tests/ui/MTaughtPrinter.h"

#include <gtest/gtest.h>

namespace {

/// What the fields of the parameter page show once the settings were read.
const std::map<QString, QString>& Page() {
    // clang-format off
    static const std::map<QString, QString> strPage{
        {"cmbFontCode", "PC-1254"},
        {"cmbZeroCode", "WITH SLASH"},
        {"cmbSpeed", "115200bps"},
        {"cmbDataLeg", "7bits"},
        {"cmbStopBit", "1bit"},  // the printer does not tell its own
        {"cmbParity", "ODD"},
        {"cmbControl", "READY/BUSY(RTS)"},
        {"cmbFowardWait", "OFF"},
        {"SeFowardPosition", "-3.5"},
        {"cmbCode", "MANUAL"},
        {"SeCode1", "2B"},
        {"SeCode2", "0D"},
        {"SeCode3", "7F"},
        {"cmbPeelOffStatus", "ON"},
        {"cmbFeedKey", "PRINT"},
        {"cmbKanji", "TYPE2"},
        {"SeEuroCode", "A4"},
        {"cmbAutoHdChk", "ON"},
        {"cmbAckBusy", "TYPE2"},
        {"cmbWebPrinter", "ON"},
        {"cmbInputPrime", "ON"},
        {"cmbRibbonNearEnd", "70m"},
        {"cmbExIoMode", "TYPE2"},
        {"cmbPlugPlay", "ON"},
        {"cmbLblRbnEnd", "TYPE2"},
        {"cmbPrePeelOff", "ON"},
        {"cmbBackSpeed", "STD"},
        {"cmbMaxiCodeSpec", "TYPE2"},
        {"cmbKbIF", "OFF"},  // no command sets it
        {"cmbPeelOffTrq", "R3"},
        {"SeFeedAdj", "12.3"},
        {"SeCutAdj", "-4.5"},
        {"SeBackAdj", "-6.7"},
        {"SeXAdj", "5.5"},
        {"SeToneAdjT", "-3"},
        {"SeToneAdjD", "9"},
        {"SeRbnAdjFw", "-12"},
        {"SeRbnAdjBk", "-15"},
        {"SeThresholdR", "3.1"},
        {"SeThresholdT", "0.7"},
    };
    // clang-format on
    return strPage;
}

}  // namespace

namespace MTaughtPrinter {

void ExpectPage(CMainWindow& p_objWindow) {
    for (const auto& [strName, strValue] : Page()) {
        EXPECT_EQ(p_objWindow.Shown(strName), strValue) << strName.toStdString();
    }
}

}  // namespace MTaughtPrinter
