// orvan show: one game: its header, its moves with variations and comments,
// and a board at any ply.
#include <fmt/format.h>

#include <memory>
#include <string_view>

#include "cli_error.h"
#include "commands.h"
#include "encoding.h"
#include "game_file.h"
#include "game_header.h"
#include "game_range.h"
#include "position_text.h"

namespace orvan_cli {

namespace {

struct Options {
    std::string gameFile;
    std::string games;
    int32_t ply = -1;
    bool board = false;
};

// Header fields shown, in order, with their labels.
struct ShownField {
    const char* label;
    int32_t field;
};
constexpr ShownField kShownFields[] = {
    {"Event", HdrPlace}, {"Site", HdrSite},   {"Round", HdrRound},        {"White", HdrWhiteFull},
    {"Black", HdrBlackFull}, {"Result", HdrResultShort}, {"ECO", HdrKeycode}, {"Annotator", HdrAnnotator},
    {"Remark", HdrRemark}, {"Moves", HdrMoves}, {"Status", HdrStatus}};

void PrintHeader(OvGameBuffer game, int32_t number)
{
    fmt::print("Game {}\n", number);
    const std::string date = HeaderDate(game);
    for (const auto& shown : kShownFields) {
        const std::string text = HeaderText(game, shown.field);
        if (!text.empty())
            fmt::print("  {:<10}{}\n", shown.label, text);
        if (shown.field == HdrSite && !date.empty())
            fmt::print("  {:<10}{}\n", "Date", date);
    }
}

// The movetext of the game, as the PGN writer lays it out, in UTF-8.
void PrintMoves(OvGameBuffer game)
{
    const HGLOBAL block = OvCreatePgnGame(game, 0);
    if (block == nullptr)
        throw CliError(kExitFailed, "the game's moves cannot be written out");
    std::unique_ptr<void, HGLOBAL (*)(HGLOBAL)> owner(block, GlobalFree);
    const char* text = static_cast<const char*>(GlobalLock(block));
    std::string_view pgn(text != nullptr ? text : "");
    const size_t movetext = pgn.find("\n\n");
    pgn = movetext == std::string_view::npos ? std::string_view() : pgn.substr(movetext + 2);
    while (!pgn.empty() && pgn.back() == '\n')
        pgn.remove_suffix(1);
    fmt::print("\n{}\n", Windows1252ToUtf8(pgn));
    GlobalUnlock(block);
}

void PrintBoard(OvGameBuffer game, int32_t ply)
{
    const int32_t moved = OvGotoMove(game, ply);
    sPosition start{}, position{};
    OvGetInitialPos(game, &start);
    OvGetCurrentPos(game, &position);
    // Full moves count from 1, one more after each black move.
    const int32_t blackFirst = (start.sideToMove & 1) == 0 ? 1 : 0;
    const int32_t fullMove = 1 + (moved + blackFirst) / 2;
    fmt::print("\nAfter {} plies{}:\n{}FEN {}\n", moved, moved < ply ? " (the end of the game)" : "",
               BoardDiagram(position), FormatFen(position, fullMove));
}

}  // namespace

Command AddShowCommand(CLI::App& root)
{
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("show", "Show a game: header, moves and a board");
    app->add_option("FILE", options->gameFile, "The game file")->required();
    app->add_option("GAMES", options->games, "The game's number (from 1), or several: 1-3,7")->required();
    app->add_option("-p,--ply", options->ply, "Show the board after this many plies (0: the start)")
        ->check(CLI::NonNegativeNumber);
    app->add_flag("-b,--board", options->board, "Show the board at the end of the game");
    return {app, [options] {
                const GameFile file = GameFile::Open(options->gameFile);
                GameBuffer game;
                bool first = true;
                for (int32_t number : ParseGameRange(options->games, file.GameCount())) {
                    if (OvReadGame(game.Handle(), file.Handle(), number) == 0)
                        throw CliError(kExitFailed, fmt::format("game {} cannot be read", number));
                    if (!first)
                        fmt::print("\n");
                    first = false;
                    PrintHeader(game.Handle(), number);
                    PrintMoves(game.Handle());
                    if (options->ply >= 0 || options->board)
                        PrintBoard(game.Handle(), options->ply >= 0 ? options->ply : PGN_MAX_MOVES);
                }
                return 0;
            }};
}

}  // namespace orvan_cli
