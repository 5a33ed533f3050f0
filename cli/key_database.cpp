#include "key_database.h"

#include <fmt/format.h>

#include <charconv>
#include <filesystem>

#include "cli_error.h"
#include "encoding.h"
#include "position_text.h"

namespace orvan_cli {

KeyDatabase::KeyDatabase(const std::string& gameFilePath, bool required)
    : open_(OvOpenDatabase(gameFilePath.c_str(), OV_KEYDB_OPEN_EXISTING) != 0)
{
    std::error_code error;
    if (!open_ && required && !std::filesystem::exists(gameFilePath, error))
        throw CliError(kExitBadInput, gameFilePath + ": no such file");
    if (!open_ && required)
        throw CliError(kExitBadInput,
                       fmt::format("{}: has no opening tree (build the default one with 'ovkey-eco-tree {}')",
                                   gameFilePath, gameFilePath));
}

KeyDatabase::~KeyDatabase()
{
    if (open_)
        OvCloseDatabase(0);
}

KeySummary DescribeKey(int32_t key)
{
    sKeyInfo info{};
    OvGetKeyInfo(key, &info);
    return {key, Windows1252ToUtf8(info.keycode), Windows1252ToUtf8(info.name), info.data};
}

std::string KeyLineText(int32_t key)
{
    sPosition position = ParseFen("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1");
    std::string line;
    const int32_t ply = DescribeKey(key).data.ply;
    for (int32_t n = 1; n <= ply; ++n) {
        const auto move = static_cast<uint32_t>(OvGetKeyMove(key, n));
        if (move == 0)
            break;
        char text[OV_MOVE_TEXT_SIZE] = {};
        OvMoveToText(move, static_cast<uint32_t>(OvGetMoveInfo(&position, move)), text, OV_TEXT_PROMOTION_SIGN,
                     nullptr);
        if (!line.empty())
            line += ' ';
        if (n % 2 == 1)
            line += fmt::format("{}. ", (n + 1) / 2);
        line += text;
        OvPlayMove(&position, move);
    }
    return line;
}

std::vector<int32_t> FindKeys(const std::string& text)
{
    int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size()) {
        if (DescribeKey(number).data.key == 0)
            throw CliError(kExitUsage, fmt::format("no key number {} in the opening tree", number));
        return {number};
    }
    std::vector<int32_t> keys;
    const std::string code = Utf8ToWindows1252(text);
    for (int32_t key = OvGetFirstKey(0, OV_KEYORDER_CODE); key != 0; key = OvGetNextKey(key, OV_KEYORDER_CODE)) {
        sKeyInfo info{};
        OvGetKeyInfo(key, &info);
        if (code == info.keycode)
            keys.push_back(key);
        else if (!keys.empty())
            break;  // past the keys of that code
    }
    if (keys.empty())
        throw CliError(kExitUsage, fmt::format("no key '{}' in the opening tree", text));
    return keys;
}

}  // namespace orvan_cli
