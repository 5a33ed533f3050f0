// The move tree of a game buffer and the walk through it.
#include <algorithm>
#include <cstring>

#include "ovgame/game_buffer.h"
#include "ovgame/move_codec.h"

namespace ovg {
namespace {

void SetText(HeaderText& field, const char* text, size_t length)
{
    length = std::min<size_t>(length, MaxTextLength);
    if (length > 0)
        std::memcpy(field.text, text, length);
    field.text[length] = '\0';
    field.length = uint16_t(length);
}

}  // namespace

constinit BufferTable liveBuffers;

std::string_view FieldText(const GameBuffer& game, TextField field)
{
    const HeaderText& own = game.header.texts[field];
    if ((game.header.pendingTexts & (1u << field)) == 0)
        return {own.text, own.length};
    std::string_view text;
    // The reader checked that the number is published, and a dictionary keeps
    // its numbers for good.
    game.textNames->Get(game.header.textIds[field], text);
    return text.substr(0, MaxTextLength);
}

const HeaderText& ReadyText(GameBuffer& game, TextField field)
{
    HeaderText& own = game.header.texts[field];
    if (game.header.pendingTexts & (1u << field)) {
        const std::string_view text = FieldText(game, field);
        SetText(own, text.data(), text.size());
        game.header.pendingTexts &= uint16_t(~(1u << field));
    }
    return own;
}

void PutFieldText(GameBuffer& game, TextField field, const char* text)
{
    SetText(game.header.texts[field], text == nullptr ? "" : text, text == nullptr ? 0 : strnlen(text, MaxTextLength));
    game.header.pendingTexts &= uint16_t(~(1u << field));
}

void SyncBoard(GameBuffer& game)
{
    game.boardStale = true;
    game.checked = CheckedMove{};
}

const BoardRecord& CurrentBoard(GameBuffer& game)
{
    if (game.boardStale) {
        RecordFromPosition(game.positions.back(), game.board);
        game.boardStale = false;
    }
    return game.board;
}

void ClearHeader(Header& header)
{
    header.pendingTexts = 0;
    for (HeaderText& text : header.texts) {
        text.length = 0;
        text.text[0] = '\0';
    }
    header.round = header.result = 0;
    header.elo[0] = header.elo[1] = header.time[0] = header.time[1] = 0;
    header.date[0] = header.date[1] = header.date[2] = 0;
}

void ClearTree(GameBuffer& game)
{
    ++game.treeGeneration;
    game.nodes.assign(1, Node{});
    // Most games start from the standard position, whose signature is kept.
    static const Signature standard = SignatureOf(StandardStart());
    const Position& start = StandardStart();
    const bool standardStart = std::memcmp(game.initial.squares, start.squares, 64) == 0;
    game.signature = GameSignature(standardStart ? standard : SignatureOf(game.initial));
    game.longComments.clear();
    game.shortComments.clear();
    game.armedNode = NotArmed;
    Rewind(game);
}

void Rewind(GameBuffer& game)
{
    game.path.assign(1, 0);
    game.positions.assign(1, game.initial);
    game.armedNode = NotArmed;
    SyncBoard(game);
}

void EraseGame(GameBuffer& game)
{
    ClearHeader(game.header);
    game.textNames.reset();
    game.status = 0;
    game.sourceNumber = 0;
    game.storedLength = 0;
    game.initial = StandardStart();
    ClearTree(game);
}

int32_t Walk(GameBuffer& game, int32_t count)
{
    int32_t moved = 0;
    for (; count > 0; --count, ++moved) {
        const uint32_t next = game.nodes[game.path.back()].next;
        if (next == 0)
            break;
        const Node& node = game.nodes[next];
        game.positions.push_back(game.positions.back());
        MakeMove(game.positions.back(), node.from, node.to, Kind(node.promotion));
        game.path.push_back(next);
    }
    for (; count < 0 && game.path.size() > 1; ++count, ++moved) {
        game.path.pop_back();
        game.positions.pop_back();
    }
    if (moved > 0) {
        game.armedNode = NotArmed;
        SyncBoard(game);
    }
    return moved;
}

uint32_t Continuation(const GameBuffer& game, uint32_t node, uint32_t index)
{
    uint32_t child = game.nodes[node].next;
    for (; child != 0 && index > 0; --index)
        child = game.nodes[child].alt;
    return child;
}

uint32_t ContinuationCount(const GameBuffer& game, uint32_t node)
{
    uint32_t count = 0;
    for (uint32_t child = game.nodes[node].next; child != 0; child = game.nodes[child].alt)
        ++count;
    return count;
}

namespace {

// The continuation of `node` that plays the move, 0 when none does: only the
// armed one when a subline is armed there.
uint32_t SameContinuation(const GameBuffer& game, uint32_t node, int from, int to, uint8_t promotion)
{
    const auto same = [&](uint32_t child) {
        const Node& n = game.nodes[child];
        return n.from == from && n.to == to && n.promotion == promotion;
    };
    if (game.armedNode == node) {
        const uint32_t armed = Continuation(game, node, game.armedSubline);
        return armed != 0 && same(armed) ? armed : 0;
    }
    for (uint32_t child = game.nodes[node].next; child != 0; child = game.nodes[child].alt) {
        if (same(child))
            return child;
    }
    return 0;
}

// What a move may change of a position's signature: the men counts by a
// capture, en passant or promotion; the home pawns by a pawn leaving the
// second or seventh rank or a man taken there. What it leaves as it was, the
// game's bounds already hold.
enum SignatureChange : uint8_t { CountsChange = 1, HomeChange = 2 };

// `promotes`: whether the move is a pawn's promotion, which the caller knows.
uint8_t SignatureChanges(const Position& pos, int from, int to, bool promotes)
{
    constexpr uint64_t HomeRanks = 0x00FF00000000FF00ull;
    const bool pawn = KindOf(pos.squares[from]) == Pawn;
    const bool takes = IsPiece(pos.squares[to]);
    const bool counts = takes || promotes || (pawn && FileOf(from) != FileOf(to));
    const bool home = (pawn && ((HomeRanks >> from) & 1) != 0) || (takes && ((HomeRanks >> to) & 1) != 0);
    return uint8_t((counts ? CountsChange : 0) | (home ? HomeChange : 0));
}

}  // namespace

bool Accept(GameBuffer& game, int from, int to, Kind promotion)
{
    const int place = CheckMove(game, from, to);
    if (place < 0)
        return false;
    const Position& here = game.positions.back();
    const uint8_t promo = IsPromotion(here, from, to) ? uint8_t(promotion >= Knight && promotion <= Queen ? promotion : Queen)
                                                      : uint8_t(NoKind);
    const uint32_t current = game.path.back();
    uint32_t target = game.nodes[current].next == 0 ? 0 : SameContinuation(game, current, from, to, promo);
    uint8_t changes = 0;  // of a new node's position, what may widen the game's signature
    if (target == 0) {
        Node move;
        move.from = uint8_t(from);
        move.to = uint8_t(to);
        move.promotion = promo;
        move.token = TokenOf(here, from, place, Kind(promo));
        target = AppendChild(game, current, move);
        if (target == 0)
            return false;
        changes = SignatureChanges(here, from, to, promo != NoKind);
    }
    game.positions.push_back(here);  // `here` is not used past this point
    Position& after = game.positions.back();
    MakeMove(after, from, to, Kind(promo));
    if (changes & CountsChange)
        game.signature.AddCounts(after.counts);
    if (changes & HomeChange)
        game.signature.KeepHome(HomePawnsOf(after));
    game.path.push_back(target);
    game.armedNode = NotArmed;
    SyncBoard(game);
    return true;
}

int32_t MainLineLength(const GameBuffer& game)
{
    if (game.nodes.size() <= 1)
        return game.storedLength;
    int32_t length = 0;
    for (uint32_t node = game.nodes[0].next; node != 0; node = game.nodes[node].next)
        ++length;
    return length;
}

}  // namespace ovg
