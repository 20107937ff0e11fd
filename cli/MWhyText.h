#pragma once

#include "jobs/CReadReport.h"

/// The words for a setting of a printer that has no value.
namespace MWhyText {

/// Whether the setting was read and has one of its values; if not, why. What the printer holds may
/// be none of them.
CReadReport::Why Of(const CReadReport& p_objReport, const MSettings::Row& p_objRow);

/// For scripts: "not-reported". Empty for one that has a value.
const char* Word(CReadReport::Why p_iWhy);

/// For people: "no answer reports it". Empty for one that has a value.
const char* Text(CReadReport::Why p_iWhy);

}  // namespace MWhyText
