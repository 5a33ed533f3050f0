// A game store of one game that holds only a header, for the header field
// tests: the getters and putters of the game driver read and write the
// record below. Handle 0 is the game buffer that is not open.
#ifndef ORVAN_TESTS_HEADER_FAKE_HEADER_STORE_H
#define ORVAN_TESTS_HEADER_FAKE_HEADER_STORE_H

#include <array>
#include <cstdint>
#include <string>

struct FakeHeader {
    std::string place, site, annotator, keycode, remark;
    std::array<std::string, 2> player, country, title;
    int32_t round = 0;
    std::array<int32_t, 2> elo{}, time{};
    int32_t result = 0;
    std::array<int32_t, 3> date{};
    int32_t loadnumber = 0;
    int32_t gamelength = 0;
    std::array<int32_t, 8> status{};
};

// The header of every open handle; reset to an empty header by each test.
FakeHeader& FakeGameHeader();

inline constexpr uint32_t FakeOpenGame = 7;

#endif
