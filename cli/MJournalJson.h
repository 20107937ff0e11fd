#pragma once

#include "cli/CJournalRecord.h"

#include <optional>
#include <string>
#include <string_view>

/// A record of the journal as a file, in JSON.
namespace MJournalJson {

inline constexpr int Format = 1;

std::string Text(const CJournalRecord& p_objRecord);

/// Nothing for what is none, or is of another format.
std::optional<CJournalRecord> Read(std::string_view p_strBytes);

}  // namespace MJournalJson
