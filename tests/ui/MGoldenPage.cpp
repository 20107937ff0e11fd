#include "tests/ui/MGoldenPage.h"

namespace MGoldenPage {

const std::vector<Control>& Parameter() {
    // The printer does not tell its stop bit, and no command sets the keyboard.
    // clang-format off
    static const std::vector<Control> objControls{
        {"FrParameter", "cmbFontCode", "FONT CODE", nullptr, "PC-850", "PC-1254", &CItemManager::m_objFontCode, {"PC-850", "PC-852", "PC-857", "PC-8", "PC-851", "PC-855", "PC-1250", "PC-1251", "PC-1252", "PC-1253", "PC-1254", "PC-1257", "LATIN9", "Arabic", "PC-866", "UTF-8"}},
        {"FrParameter", "cmbZeroCode", "ZERO CODE", nullptr, "NO SLASH", "WITH SLASH", &CItemManager::m_objZeroStyle, {"NO SLASH", "WITH SLASH"}},
        {"FrParameter", "cmbSpeed", "SPEED", nullptr, "9600bps", "115200bps", &CItemManager::m_objCommunicationSpeed, {"2400bps", "4800bps", "9600bps", "19200bps", "38400bps", "115200bps"}},
        {"FrParameter", "cmbDataLeg", "DATA LENG.", nullptr, "8bits", "7bits", &CItemManager::m_objDataLength, {"7bits", "8bits"}},
        {"FrParameter", "cmbStopBit", "STOP BIT", nullptr, "1bit", "1bit", &CItemManager::m_objStopBit, {"1bit", "2bits"}},
        {"FrParameter", "cmbParity", "PARITY", nullptr, "EVEN", "ODD", &CItemManager::m_objParity, {"NONE", "EVEN", "ODD"}},
        {"FrParameter", "cmbControl", "CONTROL", nullptr, "XON+READY AUTO", "READY/BUSY(RTS)", &CItemManager::m_objControl, {"XON/XOFF", "READY/BUSY(DTR)", "XON+READY AUTO", "XON/XOFF AUTO", "READY/BUSY(RTS)"}},
        {"FrParameter", "cmbFowardWait", "FOWARD WAIT", nullptr, "ON", "OFF", &CItemManager::m_objAutoForward, {"OFF", "ON"}},
        {"FrParameter", "SeFowardPosition", "FOWARD POSITION", nullptr, "0.0", "-3.5", &CItemManager::m_objAutoForwardAdjustment},
        {"FrParameter", "cmbCode", "CODE", nullptr, "AUTO", "MANUAL", &CItemManager::m_objControlCode, {"AUTO", "ESC,LF,NUL", "{,|,}", "MANUAL"}},
        {"FrParameter", "SeCode1", nullptr, "CODE 1", "1B", "2B", &CItemManager::m_objControlCode1st},
        {"FrParameter", "SeCode2", nullptr, "CODE 2", "0A", "0D", &CItemManager::m_objControlCode2nd},
        {"FrParameter", "SeCode3", nullptr, "CODE 3", "00", "7F", &CItemManager::m_objControlCode3rd},
        {"FrParameter", "cmbPeelOffStatus", "PEEL OFF STATUS", nullptr, "OFF", "ON", &CItemManager::m_objStripStatus, {"OFF", "ON"}},
        {"FrParameter", "cmbFeedKey", "FEED KEY", nullptr, "FEED", "PRINT", &CItemManager::m_objFeedKeyFunction, {"FEED", "PRINT"}},
        {"FrParameter", "cmbKanji", "KANJI CODE", nullptr, "TYPE1", "TYPE2", &CItemManager::m_objKanjiCode, {"TYPE1", "TYPE2"}},
        {"FrParameter", "SeEuroCode", "EURO CODE", nullptr, "B0", "A4", &CItemManager::m_objEuroCode},
        {"FrParameter", "cmbAutoHdChk", "AUTO HD CHK", nullptr, "OFF", "ON", &CItemManager::m_objHeadCheck, {"OFF", "ON"}},
        {"FrParameter", "cmbAckBusy", "ACK/BUSY", nullptr, "TYPE1", "TYPE2", &CItemManager::m_objAckBusyTiming, {"TYPE1", "TYPE2"}},
        {"FrParameter", "cmbWebPrinter", "WEB PRINTER", nullptr, "OFF", "ON", &CItemManager::m_objWebPrinter, {"OFF", "ON"}},
        {"FrParameter", "cmbInputPrime", "INPUT PRIME", nullptr, "OFF", "ON", &CItemManager::m_objResetNInitSignalIsON, {"OFF", "ON"}},
        {"FrParameter", "cmbRibbonNearEnd", "RIBBON NEAR END", nullptr, "OFF", "70m", &CItemManager::m_objRibbonNearEnd, {"OFF", "30m", "70m"}},
        {"FrParameter", "cmbExIoMode", "EX.I/O MODE", nullptr, "TYPE1", "TYPE2", &CItemManager::m_objExpansionIO, {"TYPE1", "TYPE2"}},
        {"FrParameter", "cmbPlugPlay", "PLUG && PLAY", "PLUG & PLAY", "OFF", "ON", &CItemManager::m_objPlugAndPlay, {"OFF", "ON"}},
        {"FrParameter", "cmbLblRbnEnd", "LBL/RBN END", nullptr, "TYPE1", "TYPE2", &CItemManager::m_objLabelendRibbonend, {"TYPE1", "TYPE2"}},
        {"FrParameter", "cmbPrePeelOff", "PRE PEEL OFF", nullptr, "OFF", "ON", &CItemManager::m_objPreStrip, {"OFF", "ON"}},
        {"FrParameter", "cmbBackSpeed", "BACK SPEED", nullptr, "LOW", "STD", &CItemManager::m_objBackFeedSpeed, {"STD", "LOW"}},
        {"FrParameter", "cmbMaxiCodeSpec", "MAXI CODE SPEC.", nullptr, "TYPE1", "TYPE2", &CItemManager::m_objMaxiCodeSpecification, {"TYPE1", "TYPE2"}},
        {"FrParameter", "cmbKbIF", "KB I/F", nullptr, "OFF", "OFF", &CItemManager::m_objKeyboardIF, {"OFF", "KB60(1)", "KB60(2)", "KB80"}},
        {"FrParameter", "cmbPeelOffTrq", "PEEL OFF TRQ", nullptr, "R0", "R3", &CItemManager::m_objStripMotorTorque, {"R0", "R1", "R2", "R3"}},
        {"FrAdjustment", "SeFeedAdj", "FEED ADJ.", nullptr, "0.0", "12.3", &CItemManager::m_objFeedAdjustment},
        {"FrAdjustment", "SeCutAdj", "CUT ADJ.", nullptr, "0.0", "-4.5", &CItemManager::m_objCutPosAdjustment},
        {"FrAdjustment", "SeBackAdj", "BACK ADJ.", nullptr, "0.0", "-6.7", &CItemManager::m_objBackFeedAdjustment},
        {"FrAdjustment", "SeXAdj", "X ADJ.", nullptr, "0.0", "5.5", &CItemManager::m_objXCoordinateAdjustment},
        {"FrAdjustment", "SeToneAdjT", "TONE ADJ.<T>", nullptr, "0", "-3", &CItemManager::m_objToneAdjustment_T},
        {"FrAdjustment", "SeToneAdjD", "TONE ADJ.<D>", nullptr, "0", "9", &CItemManager::m_objToneAdjustment_D},
        {"FrAdjustment", "SeRbnAdjFw", "RBN ADJ.<FW>", nullptr, "0", "-12", &CItemManager::m_objRibbonMotorAdjustment_F},
        {"FrAdjustment", "SeRbnAdjBk", "RBN ADJ.<BK>", nullptr, "0", "-15", &CItemManager::m_objRibbonMotorAdjustment_B},
        {"FrAdjustment", "SeThresholdR", "THRESHOLD<R>", nullptr, "1.0", "3.1", &CItemManager::m_objThresholdAdjustment_R},
        {"FrAdjustment", "SeThresholdT", "THRESHOLD<T>", nullptr, "1.4", "0.7", &CItemManager::m_objThresholdAdjustment_T},
    };
    // clang-format on
    return objControls;
}

}  // namespace MGoldenPage
