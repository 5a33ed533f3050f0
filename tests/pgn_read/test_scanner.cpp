// The scanner: token boundaries, strings, escape lines, cut tokens, and where
// memory input ends. File input and its refills are read by the real file
// comparisons.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "pgn/read/pgn_input.h"
#include "pgn/read/pgn_scanner.h"

namespace {

using Tokens = std::vector<std::string>;

// A token as "text", or "\"text\"" for a string value.
Tokens TokensOf(PgnInput& input)
{
    Tokens tokens;
    char token[PgnTokenSize];
    try {
        for (;;) {
            int32_t isString = -1;
            PgnNextToken(input, token, &isString);
            tokens.push_back(isString ? '"' + std::string(token) + '"' : std::string(token));
        }
    } catch (const PgnEndOfInput&) {
    }
    return tokens;
}

// The text in memory with its terminating NUL, so that nothing is lost.
Tokens TokensOf(const std::string& text)
{
    PgnInput input(nullptr, text.c_str(), static_cast<int32_t>(text.size() + 1));
    return TokensOf(input);
}

TEST(PgnScanner, SplitsTokensAndStrings)
{
    const std::string x300(300, 'x'), v300(300, 'v');
    const struct { std::string text; Tokens tokens; } cases[] = {
        {"Nf3!? $14! e4?\n", {"Nf3", "!?", "$14!", "e4", "?"}},
        {"{a}(b)<c>;\n", {"{", "a", "}", "(", "b", ")", "<", "c", ">", ";"}},
        {"e4;x%y d5\n", {"e4;x%y", "d5"}},
        {"% escape line [Event \"x\"]\ne4 %rest\n  %another\nd5\n", {"e4", "d5"}},
        {"1/2-\n\n  1/2 e4\n", {"1/2-1/2", "e4"}},
        {"a-\n{ b\n", {"a-", "{", "b"}},
        {"\t\v\r\n\xe9t\xe9 e4\r\n", {"\xe9t\xe9", "e4"}},
        // Strings keep their escapes and lose their outer blanks.
        {"\"  two  words \t\"\n", {"\"two  words\""}},
        {"\"   \" e4\n", {"\"\"", "e4"}},
        {"\"unclosed\ne4\n", {"\"unclosed\"", "e4"}},
        {"\"back\\\nslash\" e4\n", {"\"back\\\nslash\"", "e4"}},
        // Long tokens are cut at 255 characters; a cut string's rest is thrown
        // away up to its closing quote, escapes and line ends included.
        {x300 + "{c\n", {x300.substr(0, 255), "{", "c"}},
        {'"' + v300 + "\\\"\nmore\" e4\n", {'"' + v300.substr(0, 255) + '"', "e4"}},
        {'"' + v300.substr(0, 254) + "\\\"still\" e4\n", {'"' + v300.substr(0, 254) + "\\\"", "e4"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TokensOf(c.text), c.tokens) << c.text;
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

    PgnInput star(nullptr, "e4 *\0", 5);
    EXPECT_EQ(TokensOf(star), (Tokens{"e4", "*"})) << "a single needs no look-ahead";

    PgnInput none(nullptr, nullptr, 100);
    EXPECT_TRUE(TokensOf(none).empty());
    PgnInput negative(nullptr, "e4 e5\n", -3);
    EXPECT_TRUE(TokensOf(negative).empty());
}

TEST(PgnScanner, FileBlockBoundariesSplitNothing)
{
    // A file is read in blocks of 64 KiB. Whatever a block's end cuts, a
    // token, a string, or the stop character behind a token, the file gives
    // the tokens that the same text in memory gives.
    constexpr size_t Block = 1 << 16;
    const std::string escapeLine = '%' + std::string(Block - 4, 'x') + '\n';
    const std::string tails[] = {"e4(d4) Nf3 *\n", "e4 Nf3 *\n", "[White \"Some One\"]\n*\n"};
    for (const std::string& tail : tails)
        for (size_t shift = 0; shift < 12; ++shift) {
            const std::string text = escapeLine.substr(shift) + tail;
            std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), &std::fclose);
            ASSERT_NE(file, nullptr);
            ASSERT_EQ(std::fwrite(text.data(), 1, text.size(), file.get()), text.size());
            std::rewind(file.get());
            PgnInput fromFile(file.get(), nullptr, 0);
            EXPECT_EQ(TokensOf(fromFile), TokensOf(text)) << tail << " shifted by " << shift;
        }
}

}  // namespace
