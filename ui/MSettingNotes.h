#pragma once

#include "ui/MSettingControls.h"

#include <QString>

#include <vector>

class QWidget;

/// What is to be known of a setting and cannot be seen from its field.
namespace MSettingNotes {

/// That the printer does not report it, or is not sent it. Empty for most.
QString Of(const MSettingControls::Row& p_objRow);

/// Has the fields of p_objPage say it.
void Tell(const QWidget& p_objPage, const std::vector<MSettingControls::Row>& p_objRows);

}  // namespace MSettingNotes
