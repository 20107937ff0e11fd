#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A table for people: columns of text in UTF-8, two blanks between them.
class CTable {
public:
    explicit CTable(std::vector<std::string> p_strHeads);

    /// As many cells as there are heads. What would steer a terminal is shown by its code.
    void Add(const std::vector<std::string>& p_strCells);

    [[nodiscard]] bool IsEmpty() const { return m_strRows.size() == 1; }

    /// The heads and the rows, each line with its end. The last column is broken into lines so that
    /// none is wider than p_iWidth characters, where that leaves it room; 0: nothing is broken.
    [[nodiscard]] std::string Text(std::size_t p_iWidth) const;

private:
    std::vector<std::vector<std::string>> m_strRows;  // the heads first
};
