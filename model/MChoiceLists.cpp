#include "model/MChoiceLists.h"

namespace {

// The spellings "TRANSFR" and "MANTE.CNT" are meant: so the window shows them.
// clang-format off
const std::vector<MChoiceLists::List> ChoiceLists{
    {"cmbFontCode", {"PC-850", "PC-852", "PC-857", "PC-8", "PC-851", "PC-855", "PC-1250", "PC-1251", "PC-1252", "PC-1253", "PC-1254", "PC-1257", "LATIN9", "Arabic", "PC-866", "UTF-8"}},
    {"cmbZeroCode", {"NO SLASH", "WITH SLASH"}},
    {"cmbSpeed", {"2400bps", "4800bps", "9600bps", "19200bps", "38400bps", "115200bps"}},
    {"cmbDataLeg", {"7bits", "8bits"}},
    {"cmbStopBit", {"1bit", "2bits"}},
    {"cmbParity", {"NONE", "EVEN", "ODD"}},
    {"cmbControl", {"XON/XOFF", "READY/BUSY(DTR)", "XON+READY AUTO", "XON/XOFF AUTO", "READY/BUSY(RTS)"}},
    {"cmbFowardWait", {"OFF", "ON"}},
    {"cmbCode", {"AUTO", "ESC,LF,NUL", "{,|,}", "MANUAL"}},
    {"cmbPeelOffStatus", {"OFF", "ON"}},
    {"cmbFeedKey", {"FEED", "PRINT"}},
    {"cmbKanji", {"TYPE1", "TYPE2"}},
    {"cmbAutoHdChk", {"OFF", "ON"}},
    {"cmbAckBusy", {"TYPE1", "TYPE2"}},
    {"cmbWebPrinter", {"OFF", "ON"}},
    {"cmbInputPrime", {"OFF", "ON"}},
    {"cmbRibbonNearEnd", {"OFF", "30m", "70m"}},
    {"cmbExIoMode", {"TYPE1", "TYPE2"}},
    {"cmbPlugPlay", {"OFF", "ON"}},
    {"cmbLblRbnEnd", {"TYPE1", "TYPE2"}},
    {"cmbPrePeelOff", {"OFF", "ON"}},
    {"cmbBackSpeed", {"STD", "LOW"}},
    {"cmbMaxiCodeSpec", {"TYPE1", "TYPE2"}},
    {"cmbKbIF", {"OFF", "KB60(1)", "KB60(2)", "KB80"}},
    {"cmbPeelOffTrq", {"R0", "R1", "R2", "R3"}},
    {"cmbDiagPrint", {"DIRECT", "TRANSFR"}},
    {"cmbPattern", {"FEED", "SLANT LINE(1DOT)", "SLANT LINE(3DOT)", "CHARACTERS", "BARCODE", "FACTORY TEST"}},
    {"cmbPrintSpeed", {"2\"/sec", "4\"/sec"}},
    {"cmbSensor", {"NONE", "REFLECT.", "TRANS."}},
    {"cmbType", {"NO CUT", "WITH CUT", "PEEL OFF"}},
    {"cmbPrtType", {"DIRECT", "TRANSFR"}},
    {"cmbThresholdCalib", {"REFLECT.", "TRANS."}},
    {"cmbRamClear", {"PARAMETER", "MANTE.CNT"}},
    {"cmbDestination", {"", "JA", "CN", "QP", "QQ"}, MChoiceLists::NoSelection},
    {"cmbPort", {"OFF", "ON"}},
    {"cmbDhcp", {"OFF", "ON"}},
};
// clang-format on

}  // namespace

namespace MChoiceLists {

const std::vector<List>& All() {
    return ChoiceLists;
}

}  // namespace MChoiceLists
