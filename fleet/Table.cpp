// SPDX-License-Identifier: MIT
#include "Table.h"

#include "ShownText.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace fleet {

namespace {

constexpr int gap = 2;       // columns between two texts
constexpr int narrowest = 4; // of a column that is cut

} // namespace

Table::Table(std::vector<std::string> titles)
{
    rows.push_back(std::move(titles));
}

void Table::addRow(std::vector<std::string> texts)
{
    rows.push_back(std::move(texts));
}

std::vector<int> Table::columnWidths(int width) const
{
    std::vector<int> widths(rows.front().size(), 0);
    for (const auto &row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], columnsOf(row[i]));
    }
    const int gaps = gap * (static_cast<int>(widths.size()) - 1);
    for (int total = std::accumulate(widths.begin(), widths.end(), gaps); width > 0 && total > width;
         --total) {
        int &widest = *std::ranges::max_element(widths);
        if (widest <= narrowest)
            break;
        --widest;
    }
    return widths;
}

std::string Table::text(int width) const
{
    const std::vector<int> widths = columnWidths(width);
    std::string text;
    for (const auto &row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string cell = fittedTo(row[i], widths[i]);
            line += cell;
            const int blanks = widths[i] - columnsOf(cell) + gap;
            if (i + 1 < row.size())
                line.append(static_cast<std::size_t>(blanks), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

} // namespace fleet
