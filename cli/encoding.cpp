#include "encoding.h"

#include <array>
#include <cstdint>

#include "cli_error.h"

namespace orvan_cli {

namespace {

// The code points of Windows-1252 bytes 0x80 to 0x9F; 0 marks the five
// unassigned bytes. Every other byte is its own code point.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void AppendUtf8(char32_t cp, std::string& out)
{
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

char Windows1252Byte(char32_t cp)
{
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF))
        return static_cast<char>(cp);
    for (size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == cp && cp != 0)
            return static_cast<char>(0x80 + i);
    return '?';
}

// The length of the UTF-8 sequence a lead byte starts, 0 for a byte that
// cannot lead one.
int SequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Decodes one sequence of `length` bytes whose continuation bytes are checked;
// returns the code point, or 0xFFFD for an overlong form or a surrogate.
char32_t Decode(std::string_view bytes)
{
    const auto lead = static_cast<unsigned char>(bytes[0]);
    char32_t cp = bytes.size() == 2 ? (lead & 0x1F) : bytes.size() == 3 ? (lead & 0x0F) : (lead & 0x07);
    for (size_t i = 1; i < bytes.size(); ++i)
        cp = (cp << 6) | (static_cast<unsigned char>(bytes[i]) & 0x3F);
    const bool overlong = (bytes.size() == 3 && cp < 0x800) || (bytes.size() == 4 && cp < 0x10000);
    if (overlong || (cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF)
        return 0xFFFD;
    return cp;
}

}  // namespace

Encoding ParseEncoding(std::string_view text, std::string_view option)
{
    if (text == "auto")
        return Encoding::Auto;
    if (text == "utf-8" || text == "utf8" || text == "UTF-8")
        return Encoding::Utf8;
    if (text == "windows-1252" || text == "cp1252" || text == "latin1")
        return Encoding::Windows1252;
    throw CliError(kExitUsage, std::string(option) + ": unknown encoding '" + std::string(text) +
                                   "' (use auto, utf-8 or windows-1252)");
}

std::string Windows1252ToUtf8(std::string_view text)
{
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xA0) {
            const char32_t cp = kHighControls[byte - 0x80];
            AppendUtf8(cp != 0 ? cp : 0xFFFD, out);
        } else {
            AppendUtf8(byte, out);
        }
    }
    return out;
}

std::string Utf8ToWindows1252(std::string_view text)
{
    std::string out;
    Utf8ToWindows1252Stream stream;
    stream.Convert(text, out);
    stream.Finish(out);
    return out;
}

void Utf8ToWindows1252Stream::Convert(std::string_view piece, std::string& out)
{
    out.reserve(out.size() + piece.size());
    size_t i = 0;
    // Complete a character left over from the previous piece.
    while (!pending_.empty() && i < piece.size()) {
        const auto byte = static_cast<unsigned char>(piece[i]);
        if (!IsContinuation(byte)) {
            out += '?';
            pending_.clear();
            break;
        }
        pending_ += piece[i++];
        if (static_cast<int>(pending_.size()) == SequenceLength(static_cast<unsigned char>(pending_[0]))) {
            out += Windows1252Byte(Decode(pending_));
            pending_.clear();
        }
    }
    while (i < piece.size()) {
        const auto lead = static_cast<unsigned char>(piece[i]);
        const int length = SequenceLength(lead);
        if (length == 1) {
            out += piece[i++];
            continue;
        }
        if (length == 0) {
            out += '?';
            ++i;
            continue;
        }
        size_t have = 1;
        while (have < static_cast<size_t>(length) && i + have < piece.size() &&
               IsContinuation(static_cast<unsigned char>(piece[i + have])))
            ++have;
        if (have == static_cast<size_t>(length)) {
            out += Windows1252Byte(Decode(piece.substr(i, have)));
        } else if (i + have == piece.size()) {
            pending_.assign(piece.substr(i, have));  // finished by the next piece
        } else {
            out += '?';  // cut short by a byte that continues nothing
        }
        i += have;
    }
}

void Utf8ToWindows1252Stream::Finish(std::string& out)
{
    if (!pending_.empty())
        out += '?';
    pending_.clear();
}

void Utf8Detector::Feed(std::string_view piece)
{
    for (char c : piece) {
        if (!valid_)
            return;
        const auto byte = static_cast<unsigned char>(c);
        if (needed_ > 0) {
            if (!IsContinuation(byte))
                valid_ = false;
            --needed_;
            continue;
        }
        const int length = SequenceLength(byte);
        if (length == 0) {
            valid_ = false;
        } else if (length > 1) {
            sawMultiByte_ = true;
            needed_ = length - 1;
        }
    }
}

}  // namespace orvan_cli
