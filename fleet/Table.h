// SPDX-License-Identifier: MIT
// Rows and columns for people: each column as wide as its longest text, all of it no wider than the terminal.
#pragma once

#include <string>
#include <vector>

namespace fleet {

class Table
{
public:
    explicit Table(std::vector<std::string> titles);

    /// \param texts  one for each title, as shownText gives them
    void addRow(std::vector<std::string> texts);

    /// The table, a line for the titles and each row. Where it is wider than \p width columns, the widest columns are made
    /// narrower, and what they lose is shown by an ellipsis; 0 is no limit. The last column is not filled up.
    std::string text(int width) const;

private:
    std::vector<int> columnWidths(int width) const;

    std::vector<std::vector<std::string>> rows; // the titles first
};

} // namespace fleet
