#include "ui/MBinding.h"

namespace {

using MBinding::Kind;
using MBinding::Row;

// clang-format off
const std::vector<Row> ParameterRows{
    {"cmbFontCode", Kind::List, &CItemManager::m_objFontCode},
    {"cmbZeroCode", Kind::List, &CItemManager::m_objZeroStyle},
    {"cmbSpeed", Kind::List, &CItemManager::m_objCommunicationSpeed},
    {"cmbDataLeg", Kind::List, &CItemManager::m_objDataLength},
    {"cmbStopBit", Kind::List, &CItemManager::m_objStopBit},
    {"cmbParity", Kind::List, &CItemManager::m_objParity},
    {"cmbControl", Kind::List, &CItemManager::m_objControl},
    {"cmbFowardWait", Kind::List, &CItemManager::m_objAutoForward},
    {"SeFowardPosition", Kind::SignedPair, &CItemManager::m_objAutoForwardAdjustment, &CItemManager::m_objAutoForwardDirection},
    {"cmbCode", Kind::List, &CItemManager::m_objControlCode},
    {"SeCode1", Kind::SpinEdit, &CItemManager::m_objControlCode1st},
    {"SeCode2", Kind::SpinEdit, &CItemManager::m_objControlCode2nd},
    {"SeCode3", Kind::SpinEdit, &CItemManager::m_objControlCode3rd},
    {"cmbPeelOffStatus", Kind::List, &CItemManager::m_objStripStatus},
    {"cmbFeedKey", Kind::List, &CItemManager::m_objFeedKeyFunction},
    {"cmbKanji", Kind::List, &CItemManager::m_objKanjiCode},
    {"SeEuroCode", Kind::SpinEdit, &CItemManager::m_objEuroCode},
    {"cmbAutoHdChk", Kind::List, &CItemManager::m_objHeadCheck},
    {"cmbAckBusy", Kind::List, &CItemManager::m_objAckBusyTiming},
    {"cmbWebPrinter", Kind::List, &CItemManager::m_objWebPrinter},
    {"cmbInputPrime", Kind::List, &CItemManager::m_objResetNInitSignalIsON},
    {"cmbRibbonNearEnd", Kind::List, &CItemManager::m_objRibbonNearEnd},
    {"cmbExIoMode", Kind::List, &CItemManager::m_objExpansionIO},
    {"cmbPlugPlay", Kind::List, &CItemManager::m_objPlugAndPlay},
    {"cmbLblRbnEnd", Kind::List, &CItemManager::m_objLabelendRibbonend},
    {"cmbPrePeelOff", Kind::List, &CItemManager::m_objPreStrip},
    {"cmbBackSpeed", Kind::List, &CItemManager::m_objBackFeedSpeed},
    {"cmbMaxiCodeSpec", Kind::List, &CItemManager::m_objMaxiCodeSpecification},
    {"cmbKbIF", Kind::List, &CItemManager::m_objKeyboardIF},
    {"cmbPeelOffTrq", Kind::List, &CItemManager::m_objStripMotorTorque},
    {"SeFeedAdj", Kind::SignedPair, &CItemManager::m_objFeedAdjustment, &CItemManager::m_objFeedDirection},
    {"SeCutAdj", Kind::SignedPair, &CItemManager::m_objCutPosAdjustment, &CItemManager::m_objCutPosDirection},
    {"SeBackAdj", Kind::SignedPair, &CItemManager::m_objBackFeedAdjustment, &CItemManager::m_objBackFeedDirection},
    {"SeXAdj", Kind::SignedPair, &CItemManager::m_objXCoordinateAdjustment, &CItemManager::m_objXCoordinateDirection},
    {"SeToneAdjT", Kind::SignedPair, &CItemManager::m_objToneAdjustment_T, &CItemManager::m_objToneDirection_T},
    {"SeToneAdjD", Kind::SignedPair, &CItemManager::m_objToneAdjustment_D, &CItemManager::m_objToneDirection_D},
    {"SeRbnAdjFw", Kind::SignedPair, &CItemManager::m_objRibbonMotorAdjustment_F, &CItemManager::m_objRibbonMotorDirection_F},
    {"SeRbnAdjBk", Kind::SignedPair, &CItemManager::m_objRibbonMotorAdjustment_B, &CItemManager::m_objRibbonMotorDirection_B},
    {"SeThresholdR", Kind::SpinEdit, &CItemManager::m_objThresholdAdjustment_R},
    {"SeThresholdT", Kind::SpinEdit, &CItemManager::m_objThresholdAdjustment_T},
};

const std::vector<Row> LanRows{
    {"SeIpAddress1", Kind::SpinEdit, &CItemManager::m_objIpAddress1},
    {"SeIpAddress2", Kind::SpinEdit, &CItemManager::m_objIpAddress2},
    {"SeIpAddress3", Kind::SpinEdit, &CItemManager::m_objIpAddress3},
    {"SeIpAddress4", Kind::SpinEdit, &CItemManager::m_objIpAddress4},
    {"SeSubNet1", Kind::SpinEdit, &CItemManager::m_objSubnetMask1},
    {"SeSubNet2", Kind::SpinEdit, &CItemManager::m_objSubnetMask2},
    {"SeSubNet3", Kind::SpinEdit, &CItemManager::m_objSubnetMask3},
    {"SeSubNet4", Kind::SpinEdit, &CItemManager::m_objSubnetMask4},
    {"SeGateway1", Kind::SpinEdit, &CItemManager::m_objGateway1},
    {"SeGateway2", Kind::SpinEdit, &CItemManager::m_objGateway2},
    {"SeGateway3", Kind::SpinEdit, &CItemManager::m_objGateway3},
    {"SeGateway4", Kind::SpinEdit, &CItemManager::m_objGateway4},
    {"cmbPort", Kind::List, &CItemManager::m_objSocketPortSetting},
    {"SeSocetPort", Kind::SpinEdit, &CItemManager::m_objSocketPortNumber},
    {"cmbDhcp", Kind::List, &CItemManager::m_objDhcpSetting},
    {"txtDhcpName", Kind::TextBox, &CItemManager::m_objDhcpClientHost},
};
// clang-format on

}  // namespace

namespace MBinding {

const std::vector<Row>& ParameterSetting() {
    return ParameterRows;
}

const std::vector<Row>& Lan() {
    return LanRows;
}

}  // namespace MBinding
