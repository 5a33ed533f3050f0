// Packing and unpacking of stored game records.
#include "ovgame/game_record.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "ovgame/move_codec.h"
#include "ovgame/pattern_statistics.h"

namespace ovg {
namespace {

enum : uint8_t {
    LayoutSetUp = 1,
    LayoutComments = 2,
    LayoutOwnBounds = 4,
    LayoutWideCounts = 8,
};
constexpr int ResultShift = 4;

// Header mask bits after the text fields.
enum : uint32_t {
    MaskRound = 1u << TextFieldCount,
    MaskWhiteElo = MaskRound << 1,
    MaskBlackElo = MaskRound << 2,
    MaskTimes = MaskRound << 3,
    MaskDate = MaskRound << 4,
};

enum : uint8_t { CommentLong = 1, CommentShort = 2 };

const GameSignature& StandardSignature()
{
    static const GameSignature standard(SignatureOf(StandardStart()));
    return standard;
}

bool IsStandardStart(const Position& pos)
{
    const Position& start = StandardStart();
    return std::memcmp(pos.squares, start.squares, 64) == 0 && pos.side == start.side &&
           pos.castling == start.castling && pos.epFile == 0 && pos.ply == 1;
}

void WriteCounts(ByteWriter& out, const uint8_t* counts, bool wide)
{
    if (wide) {
        out.Bytes(counts, SignatureKinds);
        return;
    }
    for (int i = 0; i < SignatureKinds; i += 2)
        out.Byte(uint8_t(counts[i] | counts[i + 1] << 4));
}

void ReadCounts(ByteReader& in, uint8_t* counts, bool wide)
{
    if (wide) {
        for (int i = 0; i < SignatureKinds; ++i)
            counts[i] = in.Byte();
        return;
    }
    for (int i = 0; i < SignatureKinds; i += 2) {
        const uint8_t b = in.Byte();
        counts[i] = b & 15;
        counts[i + 1] = b >> 4;
    }
}

uint8_t SquareNibble(uint8_t code)
{
    return IsPiece(code) ? uint8_t((ColorOf(code) == Black ? 8 : 0) + KindOf(code) + 1) : 0;
}

uint8_t CodeOfNibble(uint8_t nibble)
{
    const uint8_t kind = nibble & 7;
    if (kind == 0 || kind > 6)
        return DrvEmpty;
    return PieceCode((nibble & 8) ? Black : White, Kind(kind - 1));
}

void WritePosition(ByteWriter& out, const Position& pos)
{
    for (int sq = 0; sq < 64; sq += 2)
        out.Byte(uint8_t(SquareNibble(pos.squares[sq]) | SquareNibble(pos.squares[sq + 1]) << 4));
    out.Byte(pos.side);
    out.Byte(pos.castling);
    out.Byte(pos.epFile);
    out.Varint(uint32_t(pos.ply));
}

Position ReadPosition(ByteReader& in)
{
    Position pos{};
    for (int sq = 0; sq < 64; sq += 2) {
        const uint8_t b = in.Byte();
        pos.squares[sq] = CodeOfNibble(b & 15);
        pos.squares[sq + 1] = CodeOfNibble(b >> 4);
    }
    pos.side = in.Byte();
    pos.castling = in.Byte();
    pos.epFile = in.Byte();
    pos.ply = int32_t(in.Varint32() & 0x7FFFFFFF);
    Normalise(pos);
    return pos;
}

// The sections of a record behind its header.
struct Sections {
    uint8_t layout = 0;
    GameSignature signature;
    Position initial;
    ByteReader moves{nullptr, 0};
    size_t rest = 0;  // offset of what follows the moves
};

// Reads the header and finds the sections behind it. False for a damaged
// record.
bool ReadRecord(ByteReader& in, PackedHeader& header, Sections& sections)
{
    if (!ReadPackedHeader(in, header))
        return false;
    sections.layout = header.layout;
    const bool wide = sections.layout & LayoutWideCounts;
    if (sections.layout & LayoutOwnBounds) {
        ReadCounts(in, sections.signature.least, wide);
        sections.signature.homeAlways = in.U16();
        ReadCounts(in, sections.signature.most, wide);
        sections.signature.homeInitial = in.U16();
    } else {
        sections.signature = StandardSignature();
        ReadCounts(in, sections.signature.least, wide);
        sections.signature.homeAlways = in.U16();
    }
    sections.initial = (sections.layout & LayoutSetUp) ? ReadPosition(in) : StandardStart();
    const uint32_t movesSize = in.Varint32();
    const std::string_view moves = in.Bytes(movesSize);
    sections.moves = ByteReader(reinterpret_cast<const uint8_t*>(moves.data()), moves.size());
    sections.rest = in.Offset();
    return !in.Failed();
}

bool ReadComments(GameBuffer& game, ByteReader in)
{
    const uint32_t entries = in.Varint32();
    uint32_t ordinal = 0;
    for (uint32_t i = 0; i < entries && !in.Failed(); ++i) {
        ordinal += in.Varint32();
        const uint8_t kind = in.Byte();
        if (ordinal >= game.nodes.size())
            return false;
        Node& node = game.nodes[ordinal];
        if (kind == CommentLong) {
            const uint32_t lines = in.Varint32();
            const std::string_view text = in.Bytes(in.Varint32());
            // Exactly `lines` lines, each ended by a NUL: a damaged record must
            // not make a reader of the lines run past the text.
            if (lines > 65535 || size_t(std::count(text.begin(), text.end(), '\0')) != lines ||
                (!text.empty() && text.back() != '\0'))
                return false;
            game.longComments.push_back(LongComment{std::string(text), uint16_t(lines)});
            node.longComment = uint32_t(game.longComments.size());
        } else if (kind == CommentShort) {
            game.shortComments.emplace_back(in.Bytes(in.Varint32()));
            node.shortComment = uint32_t(game.shortComments.size());
        } else {
            return false;
        }
    }
    return !in.Failed() && in.AtEnd();
}

void WriteComments(const GameBuffer& game, const std::vector<uint32_t>& order, std::vector<uint8_t>& out)
{
    ByteWriter writer(out);
    uint32_t entries = 0;
    for (uint32_t node : order)
        entries += (game.nodes[node].longComment != 0) + (game.nodes[node].shortComment != 0);
    writer.Varint(entries);
    uint32_t previous = 0;
    for (uint32_t ordinal = 0; ordinal < order.size(); ++ordinal) {
        const Node& node = game.nodes[order[ordinal]];
        if (node.longComment != 0) {
            const LongComment& comment = game.longComments[node.longComment - 1];
            writer.Varint(ordinal - previous);
            previous = ordinal;
            writer.Byte(CommentLong);
            writer.Varint(comment.count);
            writer.Varint(comment.lines.size());
            writer.Bytes(comment.lines.data(), comment.lines.size());
        }
        if (node.shortComment != 0) {
            const std::string& text = game.shortComments[node.shortComment - 1];
            writer.Varint(ordinal - previous);
            previous = ordinal;
            writer.Byte(CommentShort);
            writer.Varint(text.size());
            writer.Bytes(text.data(), text.size());
        }
    }
}

bool SamePosition(const Position& a, const Position& b)
{
    return a.side == b.side && a.castling == b.castling && a.epFile == b.epFile &&
           a.occupied[0] == b.occupied[0] && a.occupied[1] == b.occupied[1] &&
           std::memcmp(a.squares, b.squares, 64) == 0;
}

bool CanStillReach(const Position& pos, const Signature& wanted)
{
    for (int color = 0; color < 2; ++color) {
        const uint8_t* have = pos.counts + 5 * color;
        const uint8_t* want = wanted.count + 5 * color;
        if (have[Pawn] < want[Pawn])
            return false;
        for (int kind = Knight; kind <= Queen; ++kind) {
            if (have[kind] + have[Pawn] < want[kind])
                return false;
        }
    }
    for (int file = 0; file < 8; ++file) {
        if (((wanted.home >> file) & 1) && pos.squares[SquareOf(file, 1)] != PieceCode(White, Pawn))
            return false;
        if (((wanted.home >> (8 + file)) & 1) && pos.squares[SquareOf(file, 6)] != PieceCode(Black, Pawn))
            return false;
    }
    return true;
}

}  // namespace

PackResult PackGame(const GameBuffer& game, NameDictionary& names, std::vector<uint8_t>& out)
{
    thread_local std::vector<uint8_t> moves;
    thread_local std::vector<uint32_t> order;
    moves.clear();
    if (CountBits(game.initial.occupied[0]) > 16 || CountBits(game.initial.occupied[1]) > 16)
        return PackResult::TooManyMen;
    const bool mayHaveComments = !game.longComments.empty() || !game.shortComments.empty();
    int32_t mainLength = 0;
    if (!EncodeTree(game, moves, mayHaveComments ? &order : nullptr, mainLength))
        return PackResult::TooManyMen;
    const GameSignature& signature = game.signature;

    uint32_t ids[TextFieldCount];
    uint32_t mask = 0;
    for (int f = 0; f < TextFieldCount; ++f) {
        const std::string_view text = FieldText(game, TextField(f));
        uint32_t id = names.Find(text);
        if (id == UINT32_MAX)
            id = names.Add(text);
        if (id == 0 && !text.empty())
            return PackResult::DictionaryFull;
        ids[f] = id;
        if (id != 0)
            mask |= 1u << f;
    }
    const Header& h = game.header;
    if (h.round != 0)
        mask |= MaskRound;
    if (h.elo[0] != 0)
        mask |= MaskWhiteElo;
    if (h.elo[1] != 0)
        mask |= MaskBlackElo;
    if (h.time[0] != 0 || h.time[1] != 0)
        mask |= MaskTimes;
    if (h.date[0] != 0 || h.date[1] != 0 || h.date[2] != 0)
        mask |= MaskDate;

    const GameSignature& standard = StandardSignature();
    const bool ownBounds = std::memcmp(signature.most, standard.most, SignatureKinds) != 0 ||
                           signature.homeInitial != standard.homeInitial;
    bool wide = false;
    for (int i = 0; i < SignatureKinds; ++i)
        wide = wide || signature.most[i] > 15;
    bool hasComments = false;
    for (size_t i = 0; mayHaveComments && i < order.size() && !hasComments; ++i)
        hasComments = game.nodes[order[i]].longComment != 0 || game.nodes[order[i]].shortComment != 0;
    const bool setUp = !IsStandardStart(game.initial);

    ByteWriter writer(out);
    writer.Byte(game.status);
    writer.Byte(uint8_t((setUp ? LayoutSetUp : 0) | (hasComments ? LayoutComments : 0) |
                        (ownBounds ? LayoutOwnBounds : 0) | (wide ? LayoutWideCounts : 0) |
                        (h.result & 3) << ResultShift));
    writer.Varint(mask);
    for (int f = 0; f < TextFieldCount; ++f) {
        if (ids[f] != 0)
            writer.Varint(ids[f]);
    }
    if (mask & MaskRound)
        writer.Signed(h.round);
    if (mask & MaskWhiteElo)
        writer.Signed(h.elo[0]);
    if (mask & MaskBlackElo)
        writer.Signed(h.elo[1]);
    if (mask & MaskTimes) {
        writer.Signed(h.time[0]);
        writer.Signed(h.time[1]);
    }
    if (mask & MaskDate) {
        for (int32_t part : h.date)
            writer.Signed(part);
    }
    writer.Varint(uint32_t(mainLength));
    WriteCounts(writer, signature.least, wide);
    writer.U16(signature.homeAlways);
    if (ownBounds) {
        WriteCounts(writer, signature.most, wide);
        writer.U16(signature.homeInitial);
    }
    if (setUp)
        WritePosition(writer, game.initial);
    writer.Varint(moves.size());
    writer.Bytes(moves.data(), moves.size());
    if (hasComments)
        WriteComments(game, order, out);
    return PackResult::Done;
}

bool ReadPackedHeader(ByteReader& from, PackedHeader& header)
{
    // A local reader and local numbers stay in registers; stores through
    // `header` could otherwise alias the reader's position.
    ByteReader in = from;
    const uint8_t status = in.Byte();
    const uint8_t layout = in.Byte();
    const uint32_t mask = in.Varint32();
    std::memset(header.texts, 0, sizeof header.texts);
    for (uint32_t fields = mask & ((1u << TextFieldCount) - 1); fields != 0; fields &= fields - 1)
        header.texts[std::countr_zero(fields)] = in.Varint32();
    header.status = status;
    header.layout = layout;
    header.result = (layout >> ResultShift) & 3;
    header.round = (mask & MaskRound) ? in.Signed() : 0;
    header.elo[0] = (mask & MaskWhiteElo) ? in.Signed() : 0;
    header.elo[1] = (mask & MaskBlackElo) ? in.Signed() : 0;
    for (int32_t& part : header.time)
        part = (mask & MaskTimes) ? in.Signed() : 0;
    for (int32_t& part : header.date)
        part = (mask & MaskDate) ? in.Signed() : 0;
    header.mainLength = int32_t(in.Varint32() & 0x7FFFFFFF);
    from = in;
    return !in.Failed();
}

namespace {

// Puts a read header into `game` with its texts pending, and empties the
// tree. On a text number `names` does not know the game is erased.
bool LoadHeader(GameBuffer& game, const PackedHeader& packed, const Sections& sections, const SharedNames& names,
                bool withStatus)
{
    const uint32_t last = names->Last();
    Header& header = game.header;
    ClearHeader(header);
    for (int f = 0; f < TextFieldCount; ++f) {
        const uint32_t id = packed.texts[f];
        if (id > last) {
            EraseGame(game);
            return false;
        }
        header.textIds[f] = id;
        if (id != 0)
            header.pendingTexts |= uint16_t(1u << f);
    }
    if (game.textNames != names)
        game.textNames = names;
    header.result = packed.result;
    header.round = packed.round;
    std::memcpy(header.elo, packed.elo, sizeof header.elo);
    std::memcpy(header.time, packed.time, sizeof header.time);
    std::memcpy(header.date, packed.date, sizeof header.date);
    game.storedLength = packed.mainLength;
    if (withStatus)
        game.status = packed.status;
    game.initial = sections.initial;
    ClearTree(game);
    return true;
}

// Reads the move tree (and comments) of a record whose header `game` holds.
bool LoadTree(GameBuffer& game, const uint8_t* data, size_t size, const Sections& sections)
{
    game.signature = sections.signature;
    const int walked = DecodeTree(sections.moves, game.initial, [&](uint32_t parent, const Node& move, const Position&) {
        return AppendChild(game, parent, move) != 0 ? WalkAnswer::Go : WalkAnswer::Stop;
    });
    const bool good = walked == 1 &&
                      (!(sections.layout & LayoutComments) ||
                       ReadComments(game, ByteReader(data + sections.rest, size - sections.rest)));
    if (!good)
        EraseGame(game);
    return good;
}

// Whether a position of the record, in any line, equals the pattern of
// `game`: 1 yes, 0 no, -1 damaged moves.
int ContainsPattern(const GameBuffer& game, const Sections& sections)
{
    ++PatternStatistics.tested;
    if (!sections.signature.MayContain(game.patternCounts)) {
        ++PatternStatistics.rejectedBySignature;
        return 0;
    }
    const Position& pattern = game.pattern;
    if (SamePosition(sections.initial, pattern))
        return 1;
    const Signature& wanted = game.patternCounts;
    const int walked = DecodeTree(sections.moves, sections.initial, [&](uint32_t, const Node&, const Position& after) {
        if (SamePosition(after, pattern))
            return WalkAnswer::Stop;
        // Men and home pawns never come back, so a line that has lost what
        // the pattern holds cannot reach it any more.
        return CanStillReach(after, wanted) ? WalkAnswer::Go : WalkAnswer::SkipLine;
    });
    return walked == 0 ? 1 : walked == 1 ? 0 : -1;
}

// Reads a record's header into `game` (see LoadHeader) and finds its
// sections; a damaged record erases the game.
bool ReadHead(GameBuffer& game, const uint8_t* data, size_t size, const SharedNames& names, bool withStatus,
              Sections& sections)
{
    ByteReader in(data, size);
    PackedHeader header;
    if (!ReadRecord(in, header, sections)) {
        EraseGame(game);
        return false;
    }
    return LoadHeader(game, header, sections, names, withStatus);
}

}  // namespace

bool ReadHeader(GameBuffer& game, const uint8_t* data, size_t size, const SharedNames& names, bool withStatus)
{
    Sections sections;
    return ReadHead(game, data, size, names, withStatus, sections);
}

bool UnpackRecord(GameBuffer& game, const uint8_t* data, size_t size, const SharedNames& names)
{
    Sections sections;
    return ReadHead(game, data, size, names, true, sections) && LoadTree(game, data, size, sections);
}

int UnpackOnPattern(GameBuffer& game, const uint8_t* data, size_t size, const SharedNames& names)
{
    ByteReader in(data, size);
    PackedHeader header;
    Sections sections;
    if (!ReadRecord(in, header, sections))
        return -1;
    const int hit = ContainsPattern(game, sections);
    if (hit < 0 || !LoadHeader(game, header, sections, names, true))
        return -1;
    if (hit == 0)
        return 0;
    return LoadTree(game, data, size, sections) ? 1 : -1;
}

bool LengthWithoutComments(const uint8_t* data, size_t size, size_t& length, uint8_t& layout)
{
    ByteReader in(data, size);
    PackedHeader header;
    Sections sections;
    if (!ReadRecord(in, header, sections))
        return false;
    length = sections.rest;
    layout = uint8_t(sections.layout & ~LayoutComments);
    return true;
}

}  // namespace ovg
