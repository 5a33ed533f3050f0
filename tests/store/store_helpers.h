// Helpers for the game store tests: a private directory, games played from
// coordinate moves ("e2e4", "e7e8n"), and RAII owners of driver handles.
#ifndef ORVAN_TESTS_STORE_HELPERS_H
#define ORVAN_TESTS_STORE_HELPERS_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "siblings/game_driver.h"

// A directory that is removed with everything in it when the object ends;
// its path is empty when it could not be made.
class TempDir {
public:
    TempDir()
    {
        char pattern[] = "/tmp/orvan-test-XXXXXX";
        path_ = mkdtemp(pattern) != nullptr ? pattern : "";
    }
    ~TempDir()
    {
        if (!path_.empty())
            std::filesystem::remove_all(path_);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

struct GameHandle {
    uint32_t id = IGGameOpenGame();
    GameHandle() = default;
    GameHandle(const GameHandle&) = delete;
    ~GameHandle() { IGGameCloseGame(id); }
    operator uint32_t() const { return id; }
};

struct FileHandle {
    uint32_t id;
    FileHandle(const std::string& path, int32_t create) : id(OvgOpenGamefile(path.c_str(), create)) {}
    FileHandle(const FileHandle&) = delete;
    ~FileHandle() { OvgCloseGamefile(id); }
    operator uint32_t() const { return id; }
};

// "e2e4" or "a7a8n" as a MoveXY; the fifth value is the driver code of the
// promotion piece of the side on the move's last rank.
inline MoveXY Xy(const std::string& move)
{
    MoveXY xy{move[0] - 'a' + 1, move[1] - '0', move[2] - 'a' + 1, move[3] - '0', 0};
    if (move.size() > 4) {
        const int base = xy.toRank == 8 ? 8 : 16;
        const std::string kinds = "pnbrqk";
        xy.promotion = base + int(kinds.find(move[4]));
    }
    return xy;
}

// Plays `moves` from the current position as the game builder does: legal
// test, then accept. Stops at the first refusal and returns how many were
// played.
inline int Play(uint32_t game, const std::vector<std::string>& moves)
{
    int played = 0;
    for (const std::string& move : moves) {
        MoveXY xy = Xy(move);
        const int32_t promotion = xy.promotion;
        if (LegalMove(game, &xy) == 0)
            break;
        if (promotion != 0)
            xy.promotion = promotion;
        if (AcceptMove(game, &xy) == 0)
            break;
        ++played;
    }
    return played;
}

// The move of a node as coordinate text.
inline std::string MoveText(uint32_t move)
{
    MoveXY xy{};
    if (IGMoveGetXY(move, &xy) == 0)
        return "";
    std::string text{char('a' + xy.fromFile - 1), char('0' + xy.fromRank), char('a' + xy.toFile - 1),
                     char('0' + xy.toRank)};
    if (xy.promotion != 0)
        text += "pnbrqk"[(xy.promotion & 7)];
    return text;
}

// The main line of the game as coordinate moves.
inline std::vector<std::string> MainLine(uint32_t game)
{
    std::vector<std::string> line;
    const uint32_t root = IGGameGetFirstMove(game);
    for (uint32_t move = root ? IGMoveGetNEXT(root) : 0; move != 0; move = IGMoveGetNEXT(move))
        line.push_back(MoveText(move));
    return line;
}

// A board from a FEN piece field (ranks 8 to 1), with side and ply given to
// BoardToInitialPosition by the caller.
inline BoardRecord BoardFromPieces(const std::string& pieces)
{
    BoardRecord board{};
    IGNewBoard(&board);
    for (int file = 0; file < 8; ++file)
        for (int rank = 0; rank < 8; ++rank)
            board.squares[BoardIndex(file, rank)] = DrvEmpty;
    int file = 0;
    int rank = 7;
    const std::string letters = "pnbrqk";
    for (char c : pieces) {
        if (c == '/') {
            --rank;
            file = 0;
        } else if (c >= '1' && c <= '8') {
            file += c - '0';
        } else {
            const bool white = c >= 'A' && c <= 'Z';
            const int kind = int(letters.find(char(white ? c - 'A' + 'a' : c)));
            board.squares[BoardIndex(file, rank)] = uint8_t((white ? 8 : 16) + kind);
            ++file;
        }
    }
    return board;
}

// Erases `game` and sets the position of `pieces` with all castling rights
// its board allows, `epFile` and the side from `ply`.
inline void SetUpPosition(uint32_t game, const std::string& pieces, int32_t ply, int32_t epFile = 0)
{
    NewGameErase(game);
    const BoardRecord board = BoardFromPieces(pieces);
    ASSERT_EQ(BoardToInitialPosition(game, &board, CastlingRights(&board), epFile, ply), 1);
}

#endif
