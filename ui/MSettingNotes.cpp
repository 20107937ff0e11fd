#include "ui/MSettingNotes.h"

#include "protocol/MAnswer.h"
#include "protocol/MSettingRoute.h"
#include "ui/CFieldTexts.h"
#include "ui/MControl.h"

#include <QStringList>

namespace {

/// Its label is that of its number, which stands behind it.
constexpr std::string_view SocketSetting = "socket";

}  // namespace

QString MSettingNotes::Of(const MSettingControls::Row& p_objRow) {
    const MSettings::Row& objSetting = MSettingControls::Setting(p_objRow);
    QStringList strNotes;
    if (p_objRow.m_strSetting == SocketSetting) {
        strNotes.append("whether the port is on");
    }
    if (MSettingRoute::ReportedIn(objSetting) == MAnswer::NoGroup) {
        strNotes.append("not reported by the printer: READ leaves it as it was");
    }
    if (MSettingRoute::CarriedBy(objSetting) == MSettingRoute::Command::None) {
        strNotes.append("not sent to the printer: SET leaves it out");
    }
    return strNotes.join("; ");
}

void MSettingNotes::Tell(const QWidget& p_objPage,
                         const std::vector<MSettingControls::Row>& p_objRows) {
    for (const MSettingControls::Row& objRow : p_objRows) {
        for (const std::string& strControl : MSettingControls::Controls(objRow)) {
            auto& objControl =
                MControl::Find<QWidget>(p_objPage, QString::fromStdString(strControl));
            CFieldTexts::Of(objControl).Set(CFieldTexts::Part::Note, Of(objRow));
        }
    }
}
