#include "cli/common/table.h"

#include "cli/common/messages.h"
#include "cli/common/terminal.h"

#include <algorithm>
#include <utility>

namespace taldork::cli {

Table::Table(std::vector<std::string> titles) { m_rows.push_back(std::move(titles)); }

void Table::add(std::vector<std::string> cells) {
    for (std::string& cell : cells)
        cell = cell.empty() ? "-" : oneLine(cell);
    m_rows.push_back(std::move(cells));
}

std::string Table::text() const {
    if (m_rows.size() == 1)
        return "";
    std::vector<std::size_t> widths;
    for (const auto& row : m_rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], displayWidth(row[i]));
    }
    std::string text;
    for (const auto& row : m_rows)
        for (std::size_t i = 0; i < row.size(); ++i)
            text += i + 1 < row.size() ? padRight(row[i], widths[i] + 2) : row[i] + "\n";
    return text;
}

} // namespace taldork::cli
