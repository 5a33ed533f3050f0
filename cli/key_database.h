// The opening key tree of a game file: its key database held open while in
// scope, and the texts of keys for people.
#ifndef ORVAN_CLI_KEY_DATABASE_H
#define ORVAN_CLI_KEY_DATABASE_H

#include <cstdint>
#include <string>
#include <vector>

#include "orvan.h"

namespace orvan_cli {

class KeyDatabase {
public:
    // Opens the key database of the game file `gameFilePath`. When the file
    // has none: throws CliError (bad input) if `required`, else stays closed.
    KeyDatabase(const std::string& gameFilePath, bool required);
    KeyDatabase(const KeyDatabase&) = delete;
    KeyDatabase& operator=(const KeyDatabase&) = delete;
    ~KeyDatabase();

    bool IsOpen() const { return open_; }

private:
    bool open_;
};

struct KeySummary {
    int32_t key = 0;
    std::string code, name;  // UTF-8
    sKeyData data{};
};

KeySummary DescribeKey(int32_t key);

// The moves of the key's line in SAN with move numbers, e.g. "1. e4 c5 2. Nf3".
std::string KeyLineText(int32_t key);

// A key given as a number or as a key code ("B90"): every key it names, in
// code order. Throws CliError (usage) when it names none.
std::vector<int32_t> FindKeys(const std::string& text);

}  // namespace orvan_cli

#endif
