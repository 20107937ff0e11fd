#include "ui/MSettingControls.h"

#include "platform/qt/MText.h"

namespace {

using MSettingControls::Place;
using MSettingControls::Row;

// clang-format off
const std::vector<Row> ParameterRows{
    {"font-code", "cmbFontCode"},
    {"zero-code", "cmbZeroCode"},
    {"speed", "cmbSpeed"},
    {"data-length", "cmbDataLeg"},
    {"stop-bit", "cmbStopBit"},
    {"parity", "cmbParity"},
    {"control", "cmbControl"},
    {"forward-wait", "cmbFowardWait"},
    {"forward-position", "SeFowardPosition"},
    {"code", "cmbCode"},
    {"code-1", "SeCode1", Place::Codes, true},
    {"code-2", "SeCode2", Place::Codes, true},
    {"code-3", "SeCode3", Place::Codes, true},
    {"peel-off-status", "cmbPeelOffStatus"},
    {"feed-key", "cmbFeedKey"},
    {"kanji-code", "cmbKanji"},
    {"euro-code", "SeEuroCode"},
    {"auto-head-check", "cmbAutoHdChk"},
    {"ack-busy", "cmbAckBusy"},
    {"web-printer", "cmbWebPrinter"},
    {"input-prime", "cmbInputPrime"},
    {"ribbon-near-end", "cmbRibbonNearEnd"},
    {"ex-io-mode", "cmbExIoMode"},
    {"plug-and-play", "cmbPlugPlay"},
    {"label-ribbon-end", "cmbLblRbnEnd"},
    {"pre-peel-off", "cmbPrePeelOff"},
    {"back-speed", "cmbBackSpeed"},
    {"maxi-code-spec", "cmbMaxiCodeSpec"},
    {"kb-if", "cmbKbIF"},
    {"peel-off-torque", "cmbPeelOffTrq"},
    {"feed-adj", "SeFeedAdj", Place::Adjustment},
    {"cut-adj", "SeCutAdj", Place::Adjustment},
    {"back-adj", "SeBackAdj", Place::Adjustment},
    {"x-adj", "SeXAdj", Place::Adjustment},
    {"tone-adj-t", "SeToneAdjT", Place::Adjustment},
    {"tone-adj-d", "SeToneAdjD", Place::Adjustment},
    {"ribbon-adj-fw", "SeRbnAdjFw", Place::Adjustment},
    {"ribbon-adj-bk", "SeRbnAdjBk", Place::Adjustment},
    {"threshold-r", "SeThresholdR", Place::Adjustment},
    {"threshold-t", "SeThresholdT", Place::Adjustment},
};

const std::vector<Row> LanRows{
    {"ip-address", "SeIpAddress", Place::Lan, true},
    {"subnet-mask", "SeSubNet", Place::Lan, true},
    {"default-gateway", "SeGateway", Place::Lan, true},
    {"socket", "cmbPort", Place::Lan},
    {"socket-port", "SeSocetPort", Place::Lan},
    {"dhcp", "cmbDhcp", Place::Lan},
    {"dhcp-host-name", "txtDhcpName", Place::Lan},
};
// clang-format on

}  // namespace

namespace MSettingControls {

const std::vector<Row>& ParameterSetting() {
    return ParameterRows;
}

const std::vector<Row>& Lan() {
    return LanRows;
}

const MSettings::Row& Setting(const Row& p_objRow) {
    return MSettings::Get(p_objRow.m_strSetting);
}

std::vector<std::string> Controls(const Row& p_objRow) {
    const MSettings::Row& objSetting = Setting(p_objRow);
    if (objSetting.m_iKind != MSettings::Kind::Address) {
        return {p_objRow.m_strControl};
    }
    std::vector<std::string> strControls;
    for (std::size_t i = 1; i <= objSetting.m_objSlots.size(); ++i) {
        strControls.push_back(p_objRow.m_strControl + std::to_string(i));
    }
    return strControls;
}

QString Caption(const Row& p_objRow) {
    return MText::ToQt(std::string(Setting(p_objRow).m_strLabel)).replace("&", "&&");
}

}  // namespace MSettingControls
