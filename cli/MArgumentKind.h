#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What an argument or an option's value is, under the name by which help shows it and the tables
/// of the command line know it. Completion goes by it.
namespace MArgumentKind {

inline constexpr const char* Setting = "SETTING";
inline constexpr const char* File = "FILE";
inline constexpr const char* Side = "SIDE";  ///< settings to compare
inline constexpr const char* Target = "TARGET";
inline constexpr const char* Function = "FUNCTION";
inline constexpr const char* Field = "FIELD";  ///< of a function, with its value
inline constexpr const char* Shell = "SHELL";
inline constexpr const char* Seconds = "SECONDS";
inline constexpr const char* Assignment = "SETTING=VALUE";
inline constexpr const char* Folder = "FOLDER";
inline constexpr const char* Name = "NAME";
inline constexpr const char* StopBit = "STOP-BIT";

struct Row {
    std::string_view m_strName;
    bool m_bFiles;                        ///< files complete it
    std::vector<std::string> m_strWords;  ///< as these do; one that ends with ":" or "=" goes on
};

/// All kinds.
std::span<const Row> All();

/// The kind of that name. Throws std::logic_error, which names it, when there is none.
const Row& Get(std::string_view p_strName);

}  // namespace MArgumentKind
