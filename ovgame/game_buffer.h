// A game buffer: one game with its header, status flags, initial position,
// move tree with comments, the path to the current position, and the exact
// position pattern of the position searches.
#ifndef OVGAME_GAME_BUFFER_H
#define OVGAME_GAME_BUFFER_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ovgame/board_rules.h"
#include "ovgame/handle_table.h"
#include "ovgame/name_dictionary.h"
#include "ovgame/position_signature.h"
#include "siblings/driver_records.h"

namespace ovg {

// The header's text fields, in the order the packed record stores them.
enum TextField : uint8_t {
    FieldPlace, FieldSite, FieldAnnotator, FieldWhite, FieldBlack, FieldWhiteCountry,
    FieldBlackCountry, FieldWhiteTitle, FieldBlackTitle, FieldKeycode, FieldRemark,
    TextFieldCount
};

constexpr int MaxTextLength = 255;

struct HeaderText {
    uint16_t length = 0;
    char text[MaxTextLength + 1] = {};
};

struct Header {
    HeaderText texts[TextFieldCount];
    // Fields whose text is still a number of GameBuffer::textNames (bit per
    // field); they become text when first asked for, so that a search that
    // looks at two fields does not copy eleven.
    uint16_t pendingTexts = 0;
    uint32_t textIds[TextFieldCount] = {};
    int32_t round = 0;
    int32_t elo[2] = {0, 0};
    int32_t time[2] = {0, 0};
    int32_t result = 0;
    int32_t date[3] = {0, 0, 0};
};

// Empties every field.
void ClearHeader(Header& header);

// The packed token of a move in the position before it (see move_codec.h);
// length 0 when the move has no token (more than 16 men of a side).
struct MoveToken {
    uint8_t bytes[2] = {0, 0};
    uint8_t length = 0;
};

// A node of the move tree. Node 0 is the root, no move itself. A node never
// changes once made, so its token stays right.
struct Node {
    uint8_t from = 0;
    uint8_t to = 0;
    uint8_t promotion = NoKind;  // the kind a pawn became, NoKind for none
    MoveToken token;
    uint32_t next = 0;           // the main continuation, 0 none
    uint32_t alt = 0;            // the next alternative from the same position, 0 none
    uint32_t longComment = 0;    // index + 1 into GameBuffer::longComments
    uint32_t shortComment = 0;   // index + 1 into GameBuffer::shortComments
};

struct LongComment {
    std::string lines;  // each line terminated by NUL
    uint16_t count = 0;
};

// A move found legal in the current position, with the place of its
// destination among its piece's targets; from -1 for none.
struct CheckedMove {
    int8_t from = -1;
    int8_t to = -1;
    int8_t place = -1;
};

constexpr uint32_t MaxNodes = 65536;  // node indices fit 16 bits of a move handle
constexpr uint32_t NotArmed = UINT32_MAX;

struct GameBuffer {
    uint32_t handle = 0;
    uint8_t treeGeneration = 0;
    Header header;
    std::shared_ptr<const NameDictionary> textNames;  // of the pending header texts
    uint8_t status = 0;
    int32_t sourceNumber = 0;
    int32_t storedLength = 0;  // main line half-moves of a header-only load
    Position initial = StandardStart();
    GameSignature signature;  // bounds of every position of the tree
    std::vector<Node> nodes;
    std::vector<LongComment> longComments;
    std::vector<std::string> shortComments;
    std::vector<uint32_t> path;        // nodes from the root to the current one
    std::vector<Position> positions;   // positions[i]: the position after path[i]
    BoardRecord board{};               // the current position in the driver's form
    bool boardStale = true;            // `board` waits for CurrentBoard
    CheckedMove checked;               // the last move LegalMove passed here
    uint32_t armedNode = NotArmed;
    uint32_t armedSubline = 0;
    bool hasPattern = false;
    Position pattern{};
    Signature patternCounts{};
};

using BufferTable = HandleTable<GameBuffer, 12>;
// The live game buffers, set up before any code runs, so that the lookup of
// every call passes no first-use guard.
extern constinit BufferTable liveBuffers;
inline BufferTable& Buffers() { return liveBuffers; }

// A move handle names the buffer slot, the tree generation and the node.
inline uint32_t MoveHandle(const GameBuffer& game, uint32_t node)
{
    const uint32_t slot = game.handle & BufferTable::SlotMask;
    return (slot << 20) | (uint32_t(game.treeGeneration & 15) << 16) | node;
}
// The buffer and node of a move handle; null when the buffer is gone or the
// tree has changed or the node is out of range. Inline, since the host asks
// for each move of a tree several times.
inline GameBuffer* FindMove(uint32_t move, uint32_t& node)
{
    // The slot names the live buffer; the tree generation tells a stale move.
    GameBuffer* game = Buffers().FindSlot(move >> 20);
    if (game == nullptr || ((move >> 16) & 15) != (game->treeGeneration & 15u))
        return nullptr;
    node = move & 0xFFFF;
    return node < game->nodes.size() ? game : nullptr;
}

// The text of a header field, looked up while it is pending.
std::string_view FieldText(const GameBuffer& game, TextField field);
// The field's own terminated text, made from the dictionary while pending.
const HeaderText& ReadyText(GameBuffer& game, TextField field);
// Stores `text` (null: empty) in a field, cut to MaxTextLength characters;
// the field then no longer is pending.
void PutFieldText(GameBuffer& game, TextField field, const char* text);

// Header, status, source number and tree back to an empty standard game.
void EraseGame(GameBuffer& game);
// Empties the tree (new generation) and stands on the initial position.
void ClearTree(GameBuffer& game);
// Back to the initial position.
void Rewind(GameBuffer& game);
// Walks `count` plies forward along main continuations or back along the
// path; result the plies moved.
int32_t Walk(GameBuffer& game, int32_t count);
// Continuation `index` (0 the main one) of `node`, 0 when there is none.
uint32_t Continuation(const GameBuffer& game, uint32_t node, uint32_t index);
uint32_t ContinuationCount(const GameBuffer& game, uint32_t node);
// Adds a node for a move after `parent` as its last continuation, without
// walking; result its index, 0 when the tree is full.
inline uint32_t AppendChild(GameBuffer& game, uint32_t parent, const Node& move)
{
    const uint32_t index = uint32_t(game.nodes.size());
    if (index >= MaxNodes)
        return 0;
    Node& node = game.nodes.emplace_back(move);
    node.next = node.alt = node.longComment = node.shortComment = 0;
    uint32_t* link = &game.nodes[parent].next;
    while (*link != 0)
        link = &game.nodes[*link].alt;
    *link = index;
    return index;
}
// Plays a legal move from the current position into the tree (see
// AcceptMove); result false for an illegal move or a full tree.
bool Accept(GameBuffer& game, int from, int to, Kind promotion);
int32_t MainLineLength(const GameBuffer& game);
// Marks the driver's form of the current position for renewal and forgets
// the move checked there.
void SyncBoard(GameBuffer& game);
// The place of the move among its piece's targets when it is legal in the
// current position (see LegalTargetPlace), -1 when not; remembered for the
// Accept of the same move.
inline int CheckMove(GameBuffer& game, int from, int to)
{
    const CheckedMove& known = game.checked;
    if (known.from == from && known.to == to)
        return known.place;
    const int place = LegalTargetPlace(game.positions.back(), from, to);
    game.checked = place < 0 ? CheckedMove{} : CheckedMove{int8_t(from), int8_t(to), int8_t(place)};
    return place;
}
// The current position in the driver's form, renewed when stale.
const BoardRecord& CurrentBoard(GameBuffer& game);

}  // namespace ovg

#endif
