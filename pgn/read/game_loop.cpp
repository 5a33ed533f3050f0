// The game loop: finds games in PGN text, tells tags from movetext, and ends a
// game at its result token, at a known tag name behind movetext, or at the
// end of the input.
#include "pgn/pgn_game.h"
#include "pgn/read/annotations.h"
#include "pgn/read/game_reader.h"
#include "pgn/read/move_token.h"
#include "pgn/read/pgn_read.h"
#include "pgn/read/pgn_scanner.h"
#include "pgn/read/read_context.h"

namespace {

class GameLoop {
public:
    GameLoop(PgnReadContext& reader, PgnGame* game, uint32_t flags, PgnGameCallback callback,
             intptr_t context)
        : reader_(reader), game_(game), flags_(flags), callback_(callback), context_(context)
    {
    }

    int32_t Run()
    {
        try {
            StartGame();
            for (;;) {
                if (!inTag_) {
                    if (inMoves_) {
                        TakeMovetextRun();
                    } else {
                        TakeTagLines();
                    }
                }
                if (TakeToken() && Finish() == 0) {
                    return 1;
                }
            }
        } catch (const PgnEndOfInput&) {
            // A game without movetext at the end of the input reaches nobody.
            if (inMoves_ && Finish() == 0) {
                return 1;
            }
            return 0;
        }
    }

private:
    void StartGame()
    {
        ResetPgnGame(game_);
        inMoves_ = false;
        inTag_ = false;
        tagCount_ = 0;
        hasComment_ = 0;
        openCount_ = 0;
        closeCount_ = 0;
        reader_.tokenCount = 0;
        reader_.bracketDepth = 0;
    }

    // Finishes the game; when the read goes on, the next game starts.
    int32_t Finish()
    {
        int32_t result = PgnFinishGame(reader_, game_, hasComment_, flags_, callback_, context_);
        if (result != 0) {
            StartGame();
            // A known tag name ended the game: its value belongs to the new
            // game, so the tag stays open for it.
            inTag_ = currentTag_ > 0 && pendingTag_;
            pendingTag_ = false;
        }
        return result;
    }

    void SkipPast(uint8_t end)
    {
        while (reader_.input.ReadChar() != end) {
        }
    }

    void SkipLine()
    {
        uint8_t c;
        do {
            c = reader_.input.ReadChar();
        } while (c != '\n' && c != '\r');
    }

    // Passes over white space in the buffered block; returns where it ends.
    static const uint8_t* SkipBlanks(const uint8_t* next, const uint8_t* limit)
    {
        while (next != limit && HasPgnClass(*next, PgnWhiteSpace)) {
            ++next;
        }
        return next;
    }

    // Takes the commonest movetext tokens straight from the buffered block,
    // without copying them: move numbers and dots, which change nothing once
    // the movetext has begun, and words that start with a letter, which are
    // move texts or nothing. Stops in front of the first token of another
    // kind, one that could read as a result ("O-1"), or one that does not lie
    // whole in the block; the token path takes that one.
    void TakeMovetextRun()
    {
        PgnInput& input = reader_.input;
        const uint8_t* next = input.Next();
        const uint8_t* limit = input.Limit();
        for (;;) {
            next = SkipBlanks(next, limit);
            if (next == limit) {
                break;
            }
            uint8_t c = *next;
            if (c == '.') {
                ++next;
                continue;
            }
            if (c >= '0' && c <= '9') {
                // A move number: digits up to white space or a stop character.
                const uint8_t* end = next + 1;
                while (end != limit && *end >= '0' && *end <= '9') {
                    ++end;
                }
                if (end == limit || !HasPgnClass(*end, PgnWhiteSpace | PgnStop)) {
                    break;
                }
                next = end;
                continue;
            }
            if (HasPgnClass(c, PgnSingle | PgnStop | PgnGlyphChar | PgnBracket) || c == '%') {
                break;
            }
            const uint8_t* end = PgnOrdinaryTokenEnd(next, limit);
            if (end == nullptr || (end - next >= 2 && (next[1] == '-' || next[1] == ':'))) {
                break;
            }
            if (PgnStoreMove(reader_, game_, reinterpret_cast<const char*>(next),
                             static_cast<int32_t>(end - next), openCount_, closeCount_)) {
                openCount_ = 0;
                closeCount_ = 0;
            }
            next = end;
        }
        input.Take(next);
    }

    // Takes the tag lines ahead of the movetext that lie whole in the buffered
    // block, '[', a name, a string the block scan reads, ']', straight from
    // the block, with the effect their four tokens have. Stops in front of
    // anything else, and of a value that starts with "]" (which closes the
    // tag before it is stored); the token path takes that.
    void TakeTagLines()
    {
        PgnInput& input = reader_.input;
        const uint8_t* next = input.Next();
        const uint8_t* limit = input.Limit();
        for (;;) {
            next = SkipBlanks(next, limit);
            if (next == limit || *next != '[') {
                break;
            }
            const uint8_t* name = SkipBlanks(next + 1, limit);
            if (name == limit || HasPgnClass(*name, PgnSingle | PgnStop) || *name == '%') {
                break;
            }
            const uint8_t* nameEnd = PgnOrdinaryTokenEnd(name, limit);
            if (nameEnd == nullptr) {
                break;
            }
            const uint8_t* quote = SkipBlanks(nameEnd, limit);
            if (quote == limit || *quote != '"') {
                break;
            }
            int32_t length;
            const uint8_t* valueEnd = PgnScanBlockString(quote, limit, token_, &length);
            if (valueEnd == nullptr || token_[0] == ']') {
                break;
            }
            const uint8_t* close = SkipBlanks(valueEnd, limit);
            if (close == limit || *close != ']') {
                break;
            }
            int32_t number = FindPgnTag(reinterpret_cast<const char*>(name), static_cast<size_t>(nameEnd - name));
            if (number > 0) {
                StorePgnTag(game_, number, token_);
                ++tagCount_;
            }
            currentTag_ = 0;
            next = close + 1;
        }
        input.Take(next);
    }

    // Takes one token and acts on it. Returns true when it ends the game.
    bool TakeToken()
    {
        int32_t isString = 0;
        int32_t length = PgnNextToken(reader_.input, token_, &isString);
        char first = token_[0];
        // Moves, move numbers and dots, most of the tokens, start with none
        // of the characters that open or close something.
        if (!isString && !HasPgnClass(static_cast<uint8_t>(first), PgnBracket)) {
            return TakeWord(length);
        }
        if (first == '[') {
            inTag_ = true;
        } else if (first == ']') {
            inTag_ = false;
        }
        if (isString) {
            if (inTag_ && currentTag_ != 0) {
                if (currentTag_ > 0) {
                    StorePgnTag(game_, currentTag_, token_);
                    ++tagCount_;
                }
                currentTag_ = 0;
                inTag_ = false;
            }
            return false;
        }
        switch (first) {
        case '{':
            // Before the first tag a comment's words come through as tokens.
            if (tagCount_ != 0 && PgnStoreComment(reader_, game_) != 0) {
                hasComment_ = 1;
            }
            return false;
        case '<':
            if (tagCount_ != 0 || inMoves_) {
                SkipPast('>');
            }
            return false;
        case '(':
            openCount_ += inMoves_ ? 1 : 0;
            return false;
        case ')':
            closeCount_ += inMoves_ ? 1 : 0;
            return false;
        case ';':
            // Inside a variation ";" separates two alternatives.
            if (reader_.bracketDepth != 0) {
                ++openCount_;
                ++closeCount_;
            } else {
                SkipLine();
            }
            return false;
        default:
            break;
        }
        return TakeWord(length);
    }

    // Takes a token that is no string and opens no comment, variation or
    // skipped text: a tag name or a word of the movetext, and the tag
    // brackets themselves. Returns true when it ends the game.
    bool TakeWord(int32_t length)
    {
        char first = token_[0];
        if (inTag_) {
            currentTag_ = FindPgnTag(token_, static_cast<size_t>(length));
            if (currentTag_ == 0) {
                currentTag_ = -1;
            } else if (inMoves_) {
                pendingTag_ = true;
                return true;
            }
            return false;
        }
        // The dots behind move numbers, a fifth of all tokens, change
        // nothing once the movetext has begun.
        if (first == '.' && inMoves_) {
            return false;
        }
        if (tagCount_ == 0) {
            return false;
        }
        if (int32_t result = PgnResultFromToken(token_); result >= 0) {
            game_->resultToken = result;
            return true;
        }
        if (!inMoves_ && !StartsMovetext(token_)) {
            return false;
        }
        inMoves_ = true;
        if (first == '!' || first == '?' || first == '$') {
            PgnStoreGlyph(reader_, game_, token_);
        } else if (!IsNeverAMove(token_, length) &&
                   PgnStoreMove(reader_, game_, token_, length, openCount_, closeCount_)) {
            openCount_ = 0;
            closeCount_ = 0;
        }
        return false;
    }

    PgnReadContext& reader_;
    PgnGame* game_;
    uint32_t flags_;
    PgnGameCallback callback_;
    intptr_t context_;

    bool inTag_ = false;
    int32_t tagCount_ = 0;
    int32_t currentTag_ = 0;  // awaited tag: its number, -1 unknown name, 0 none
    bool pendingTag_ = false; // a known tag name ended the game before its value
    bool inMoves_ = false;
    int32_t hasComment_ = 0;
    uint32_t openCount_ = 0;
    uint32_t closeCount_ = 0;
    char token_[PgnTokenSize];
};

}  // namespace

int32_t PgnReadGames(const PgnSource& source, PgnGame* game, uint32_t flags,
                     const char* pieceLetters, PgnGameCallback callback, intptr_t context)
{
    if (game == nullptr) {
        return 0;
    }
    PgnReadContext reader(source.file, source.text, source.size);
    reader.pieceLetters.Set(pieceLetters);
    return GameLoop(reader, game, flags, callback, context).Run();
}
