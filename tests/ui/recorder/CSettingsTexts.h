#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Names for the settings that stand in a recording: "{Z2;1,<s3>|}" in place of all its fields.
///
/// What settings there are, how wide they are and in which order they travel stands so in one
/// place, the table of the names, and not in each of the thousand cells in which they are sent.
/// A run of fields is what stands behind the head of a set command or of a settings answer, and
/// what is left of one that something else has cut in two.
class CSettingsTexts {
public:
    CSettingsTexts() = default;

    /// From what Table has given: the names are known.
    explicit CSettingsTexts(const std::string& p_strTable);

    /// Gives a name to each run of fields in p_strRecording that has none, in their order.
    void Learn(const std::string& p_strRecording);

    /// p_strRecording with the names of its runs of fields. One that has no name stays as it is.
    [[nodiscard]] std::string Short(const std::string& p_strRecording) const;

    /// A line for each name, in the order in which they were given.
    [[nodiscard]] std::string Table() const;

private:
    std::vector<std::string> m_strTexts;  ///< the name is the position, counted from 1
    std::map<std::string, std::size_t, std::less<>> m_iPositions;

    void Add(const std::string& p_strText);
};
