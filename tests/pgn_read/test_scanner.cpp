// The scanner: token boundaries, strings, escape lines, cut tokens, and where
// each source's input ends.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "pgn/read/pgn_input.h"
#include "pgn/read/pgn_scanner.h"

namespace {

// A string value as the tests write it: in double quotes.
std::string Quoted(const std::string& value)
{
    std::string quoted(1, '"');
    quoted.append(value).push_back('"');
    return quoted;
}

// A token as "text", or "\"text\"" for a string value.
std::vector<std::string> TokensOf(PgnInput& input)
{
    std::vector<std::string> tokens;
    char token[PgnTokenSize];
    try {
        for (;;) {
            int32_t isString = -1;
            PgnNextToken(input, token, &isString);
            tokens.push_back(isString ? Quoted(token) : std::string(token));
        }
    } catch (const PgnEndOfInput&) {
    }
    return tokens;
}

// The text in memory with its terminating NUL, so that nothing is lost.
std::vector<std::string> TokensOf(const std::string& text)
{
    PgnInput input(nullptr, text.c_str(), static_cast<int32_t>(text.size() + 1));
    return TokensOf(input);
}

using Tokens = std::vector<std::string>;

struct ScanCase {
    const char* text;
    Tokens tokens;
};

TEST(PgnScanner, SplitsTokensAsTheGameLoopNeedsThem)
{
    const ScanCase cases[] = {
        {"1. e4 e5 *\n", {"1", ".", "e4", "e5", "*"}},
        {"12...Nf6\n", {"12", ".", ".", ".", "Nf6"}},
        {"Nf3!? $14! e4?\n", {"Nf3", "!?", "$14!", "e4", "?"}},
        {"[White\"Kasparov, G.\"]\n", {"[", "White", "\"Kasparov, G.\"", "]"}},
        {"{a}(b)<c>;\n", {"{", "a", "}", "(", "b", ")", "<", "c", ">", ";"}},
        {"e4;x%y d5\n", {"e4;x%y", "d5"}},
        {"% escape line [Event \"x\"]\ne4 %rest\n  %another\nd5\n", {"e4", "d5"}},
        {"1/2-\n\n  1/2 e4\n", {"1/2-1/2", "e4"}},
        {"O-  O e4\n", {"O-O", "e4"}},
        {"a-\n{ b\n", {"a-", "{", "b"}},
        {"\t\v\r\ne4\r\n", {"e4"}},
        {"\xe9t\xe9 e4\n", {"\xe9t\xe9", "e4"}},
    };
    for (const ScanCase& test : cases) {
        EXPECT_EQ(TokensOf(test.text), test.tokens) << test.text;
    }
}

TEST(PgnScanner, StringsKeepEscapesAndLoseOuterBlanks)
{
    const ScanCase cases[] = {
        {"\"a\\\"b\"\n", {"\"a\\\"b\""}},
        {"\"   \" e4\n", {"\"\"", "e4"}},
        {"\"  two  words \t\"\n", {"\"two  words\""}},
        {"\"unclosed\ne4\n", {"\"unclosed\"", "e4"}},
        {"\"back\\\nslash\" e4\n", {"\"back\\\nslash\"", "e4"}},
    };
    for (const ScanCase& test : cases) {
        EXPECT_EQ(TokensOf(test.text), test.tokens) << test.text;
    }
}

TEST(PgnScanner, LongTokensAreCutAt255Characters)
{
    std::string word(300, 'x');
    EXPECT_EQ(TokensOf(word + " e4\n"), (Tokens{std::string(255, 'x'), "e4"}));
    EXPECT_EQ(TokensOf(word + "{c\n"), (Tokens{std::string(255, 'x'), "{", "c"}));

    std::string glyph(300, '1');
    glyph[0] = '$';
    std::string kept = glyph.substr(0, 255);
    EXPECT_EQ(TokensOf(glyph + " e4\n"), (Tokens{kept, "e4"}));

    // The cut string's rest is thrown away up to its closing quote, escapes
    // and line ends included.
    std::string cut = Quoted(std::string(300, 'v'));
    cut.insert(cut.size() - 1, "\\\"\nmore");
    EXPECT_EQ(TokensOf(cut + " e4\n"), (Tokens{Quoted(std::string(255, 'v')), "e4"}));
    std::string escapeAtEnd = Quoted(std::string(254, 'v') + "\\\"still");
    EXPECT_EQ(TokensOf(escapeAtEnd + " e4\n"),
              (Tokens{Quoted(std::string(254, 'v') + "\\"), "e4"}));
}

TEST(PgnScanner, MemoryInputEndsAtNulOrBeforeTheLastByte)
{
    // Without a NUL the last byte is not delivered, and a token that is
    // being collected when the input ends is lost.
    std::string text = "e4 e5 x";
    PgnInput whole(nullptr, text.data(), static_cast<int32_t>(text.size()));
    EXPECT_EQ(TokensOf(whole), (Tokens{"e4", "e5"}));

    std::string withNul("e4 1-0\0 d4 d5\n", 14);
    PgnInput atNul(nullptr, withNul.data(), static_cast<int32_t>(withNul.size()));
    EXPECT_EQ(TokensOf(atNul), (Tokens{"e4"})) << "a NUL right behind a token loses it";

    std::string single("e4 *\0", 5);
    PgnInput star(nullptr, single.data(), 5);
    EXPECT_EQ(TokensOf(star), (Tokens{"e4", "*"})) << "a single needs no look-ahead";

    PgnInput none(nullptr, nullptr, 100);
    EXPECT_TRUE(TokensOf(none).empty());
    PgnInput negative(nullptr, "e4 e5\n", -3);
    EXPECT_TRUE(TokensOf(negative).empty());
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::unique_ptr<std::FILE, FileCloser> FileWith(const std::string& text)
{
    std::unique_ptr<std::FILE, FileCloser> file(std::tmpfile());
    std::fwrite(text.data(), 1, text.size(), file.get());
    std::rewind(file.get());
    return file;
}

TEST(PgnScanner, FileInputDeliversEveryByte)
{
    auto ending = FileWith("e4 1-0");
    PgnInput noLineEnd(ending.get(), nullptr, 0);
    EXPECT_EQ(TokensOf(noLineEnd), (Tokens{"e4"})) << "the end arrives while 1-0 is collected";

    auto ended = FileWith("e4 1-0\n");
    PgnInput lineEnd(ended.get(), nullptr, 0);
    EXPECT_EQ(TokensOf(lineEnd), (Tokens{"e4", "1-0"}));

    auto nul = FileWith(std::string("e4\0 d5\n", 7));
    PgnInput withNul(nul.get(), nullptr, 0);
    EXPECT_EQ(TokensOf(withNul), (Tokens{"e4", "d5"})) << "a NUL in a file does not end it";
}

TEST(PgnScanner, FileAndMemoryAgreeAcrossBufferRefills)
{
    // Several buffers' worth of text, with tokens and put-back bytes standing
    // across every refill boundary.
    std::string text;
    for (int i = 0; text.size() < 700000; ++i) {
        text += std::to_string(i) + ".Nf3!?{c " + std::to_string(i % 97) + "}[T\"v\"] ";
    }
    text += "\n";
    auto file = FileWith(text);
    PgnInput fromFile(file.get(), nullptr, 0);
    Tokens fileTokens = TokensOf(fromFile);
    Tokens memoryTokens = TokensOf(text);
    EXPECT_GT(fileTokens.size(), 100000u);
    EXPECT_EQ(fileTokens, memoryTokens);
}

}  // namespace
