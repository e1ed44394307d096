#pragma once

#include <string>
#include <vector>

namespace taldork::cli {

/// Rows of texts for people, each column as wide as its widest cell, with two blanks between columns and none
/// behind the last cell of a row. Each cell is one line.
class Table {
public:
    explicit Table(std::vector<std::string> titles);

    /// An empty cell is shown as "-".
    void add(std::vector<std::string> cells);

    /// With the titles on top; empty for a table without rows.
    std::string text() const;

private:
    std::vector<std::vector<std::string>> m_rows; // the titles first
};

} // namespace taldork::cli
