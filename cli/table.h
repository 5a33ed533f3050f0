// A plain text table: columns as wide as their widest cell, counted in
// characters of UTF-8 text.
#ifndef ORVAN_CLI_TABLE_H
#define ORVAN_CLI_TABLE_H

#include <cstdio>
#include <string>
#include <vector>

namespace orvan_cli {

struct Table {
    std::vector<std::string> headings;
    std::vector<std::vector<std::string>> rows;
};

// Prints the headings, a rule, and the rows to `out`.
void PrintTable(std::FILE* out, const Table& table);

// The number of characters a UTF-8 text shows (continuation bytes not counted).
size_t DisplayWidth(const std::string& text);

}  // namespace orvan_cli

#endif
