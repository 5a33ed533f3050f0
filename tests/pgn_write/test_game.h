// Test helper: a PgnGame made by hand, and its PGN text.
#ifndef ORVAN_TESTS_PGN_WRITE_TEST_GAME_H
#define ORVAN_TESTS_PGN_WRITE_TEST_GAME_H

#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/write/game_writer.h"
#include "pgn_write/sink_text.h"

// A square by name, "e4".
constexpr int Square(std::string_view name) { return (name[0] - 'a') + 8 * (name[1] - '1'); }

class TestGame {
public:
    TestGame() { *game().position = StartPosition; }

    PgnGame& game() { return *storage_.Game(); }

    // The flat tree, entry by entry: "e2e4", "e7e8n" (promotion to a knight), then "B" for MoveBranch
    // and "E" for MoveLineEnd. moveCount becomes the length of the first line; treeCount the number
    // of entries when any entry carries MoveBranch, else 0.
    TestGame& Tree(std::initializer_list<std::string_view> entries)
    {
        PgnGame& record = game();
        uint32_t count = 0, branches = 0;
        record.moveCount = 0;
        for (std::string_view entry : entries) {
            std::string_view marks = entry.substr(4);
            uint32_t word = static_cast<uint32_t>(Square(entry.substr(0, 2)) | Square(entry.substr(2, 2)) << 8);
            word |= marks.find('n') != marks.npos ? 0xC000 : 0;
            word |= marks.find('B') != marks.npos ? MoveBranch : 0;
            word |= marks.find('E') != marks.npos ? MoveLineEnd : 0;
            branches += (word & MoveBranch) != 0;
            if ((word & MoveLineEnd) && record.moveCount == 0)
                record.moveCount = count + 1;
            record.moves[count++] = static_cast<PackedMove>(word);
            record.nags[count] = 0;
            record.commentIndex[count] = 0;
        }
        record.moveCount = record.moveCount != 0 ? record.moveCount : count;
        record.treeCount = branches != 0 ? count : 0;
        return *this;
    }

    // A set-up start position: these men on an otherwise empty board, no castling, no en passant.
    TestGame& SetUp(std::initializer_list<std::pair<std::string_view, uint8_t>> men, uint8_t sideToMove,
                    uint32_t firstMoveNumber)
    {
        sPosition& position = *game().position;
        std::memset(&position, 0, sizeof position);
        for (const auto& [square, code] : men)
            position.board[Square(square)] = code;
        position.sideToMove = sideToMove;
        position.epSquare = OV_NO_EP_SQUARE;
        game().firstMoveNumber = firstMoveNumber;
        return *this;
    }

    // Annotations of entry `entry`: 0 the game, i + 1 moves[i].
    TestGame& Comment(uint32_t entry, std::string_view text)
    {
        PgnGame& record = game();
        std::memcpy(record.commentText + record.commentUsed, text.data(), text.size());
        record.commentText[record.commentUsed + text.size()] = '\0';
        record.commentIndex[entry] = record.commentUsed;
        record.commentUsed += static_cast<uint32_t>(text.size() + 1);
        return *this;
    }
    TestGame& Nags(uint32_t entry, uint16_t word) { return game().nags[entry] = word, *this; }

    TestGame& Tag(PgnTagNumber tag, std::string_view value)
    {
        std::memcpy(game().tags[tag - 1], value.data(), value.size());
        game().tags[tag - 1][value.size()] = '\0';
        return *this;
    }

    // The whole game as PGN text.
    std::string Text()
    {
        PgnSink sink;
        PgnWriteGame(sink, game());
        return TakeText(sink);
    }

    // The movetext alone: behind the empty line that ends the tags, without the two final line feeds.
    std::string Movetext()
    {
        std::string text = Text();
        size_t start = text.find("\n\n") + 2;
        return text.substr(start, text.size() - 2 - start);
    }

private:
    PgnGameStorage storage_;
};

#endif
