#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Names for the settings that stand in a recording: "{Z2;1,<s3>|}" in place of all its fields.
///
/// What settings there are, how wide they are, in which order they travel and which fields show
/// them stands so in one place, the table of the names, and not in each of the thousand cells. A
/// run of settings is what stands behind the head of a set command or of a settings answer, what is
/// left of one that something else has cut in two, the length that USB is asked for, and the lines
/// that tell what three fields or more show in the end.
class CSettingsTexts {
public:
    CSettingsTexts() = default;

    /// From what Table has given: the names are known.
    explicit CSettingsTexts(const std::string& p_strTable);

    /// Gives a name to each run of settings in p_strRecording that has none, in their order.
    void Learn(const std::string& p_strRecording);

    /// p_strRecording with the names of its runs of settings. One that has no name stays as it is.
    [[nodiscard]] std::string Short(const std::string& p_strRecording) const;

    /// What Short was made from. Throws std::out_of_range for a name that is not in the table.
    [[nodiscard]] std::string Long(const std::string& p_strRecording) const;

    /// A line for each name, in the order in which they were given.
    [[nodiscard]] std::string Table() const;

private:
    std::vector<std::string> m_strTexts;  ///< the name is the position, counted from 1
    std::map<std::string, std::size_t, std::less<>> m_iPositions;

    void Add(const std::string& p_strText);
};
