#include "table.h"

#include <fmt/format.h>

#include <algorithm>

namespace orvan_cli {

size_t DisplayWidth(const std::string& text)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

namespace {

void PrintRow(std::FILE* out, const std::vector<std::string>& cells, const std::vector<size_t>& widths)
{
    std::string line;
    for (size_t i = 0; i < cells.size(); ++i) {
        line += cells[i];
        if (i + 1 < cells.size())
            line += std::string(widths[i] - DisplayWidth(cells[i]) + 2, ' ');
    }
    fmt::print(out, "{}\n", line);
}

}  // namespace

void PrintTable(std::FILE* out, const Table& table)
{
    std::vector<size_t> widths(table.headings.size(), 0);
    for (size_t i = 0; i < widths.size(); ++i)
        widths[i] = DisplayWidth(table.headings[i]);
    for (const auto& row : table.rows)
        for (size_t i = 0; i < row.size() && i < widths.size(); ++i)
            widths[i] = std::max(widths[i], DisplayWidth(row[i]));
    PrintRow(out, table.headings, widths);
    std::vector<std::string> rule;
    for (size_t width : widths)
        rule.emplace_back(width, '-');
    PrintRow(out, rule, widths);
    for (const auto& row : table.rows)
        PrintRow(out, row, widths);
}

}  // namespace orvan_cli
