#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <string>

#include "fake_header_store.h"
#include "frame/locale_tables.h"
#include "orvan.h"

namespace {

struct Delivered {
    int32_t result;
    std::string text;
};

Delivered Get(int32_t field, int32_t size = 256)
{
    char text[256];
    std::memset(text, 'x', sizeof text);
    int32_t result = OvGetHeaderInfo(FakeOpenGame, field, text, size);
    return {result, std::string(text, strnlen(text, sizeof text))};
}

class HeaderFields : public ::testing::Test {
protected:
    void SetUp() override
    {
        FakeGameHeader() = FakeHeader{};
        LocaleSource locale;
        locale.shortDatePictures = {"dd/MM/yyyy"};
        LoadLocaleTables(locale);
    }
    FakeHeader& header = FakeGameHeader();
};

TEST_F(HeaderFields, NumbersAndTimesHaveAValueOnlyInTheirRange)
{
    struct Case {
        std::function<void(FakeHeader&)> set;
        int32_t field;
        int32_t result;
        const char* text;
    };
    const Case cases[] = {
        {[](FakeHeader& h) { h.round = 0; }, HdrRound, 0, ""},
        {[](FakeHeader& h) { h.round = 12; }, HdrRound, 1, "12"},
        {[](FakeHeader& h) { h.elo[0] = 0; }, HdrWhiteElo, 0, ""},
        {[](FakeHeader& h) { h.elo[1] = -5; }, HdrBlackElo, 0, ""},
        {[](FakeHeader& h) { h.elo[1] = 2600; }, HdrBlackElo, 1, "2600"},
        {[](FakeHeader& h) { h.time[0] = 1; }, HdrWhiteTime, 1, "0:01"},
        {[](FakeHeader& h) { h.time[0] = 59; }, HdrWhiteTime, 1, "0:59"},
        {[](FakeHeader& h) { h.time[1] = 60; }, HdrBlackTime, 1, "1:00"},
        {[](FakeHeader& h) { h.time[1] = 5999; }, HdrBlackTime, 1, "99:59"},
        {[](FakeHeader& h) { h.time[0] = 0; }, HdrWhiteTime, 0, ""},
        {[](FakeHeader& h) { h.time[0] = 6000; }, HdrWhiteTime, 0, ""},
        {[](FakeHeader& h) { h.gamelength = 0; }, HdrMoves, 1, "0"},
        {[](FakeHeader& h) { h.gamelength = 1; }, HdrMoves, 1, "1"},
        {[](FakeHeader& h) { h.gamelength = 2; }, HdrMoves, 1, "1"},
        {[](FakeHeader& h) { h.gamelength = 3; }, HdrMoves, 1, "2"},
        {[](FakeHeader& h) { h.loadnumber = 0; }, HdrSourceLoadnumber, 1, "0"},
        {[](FakeHeader& h) { h.loadnumber = -3; }, HdrSourceLoadnumber, 1, "-3"},
        {[](FakeHeader& h) { h.date = {0, 0, 0}; }, HdrDate, 1, ""},
        {[](FakeHeader& h) { h.date = {1998, 8, 0}; }, HdrDate, 1, "08/1998"},
        {[](FakeHeader& h) { h.date = {1998, 13, 5}; }, HdrDate, 1, ""},
        {[](FakeHeader& h) { h.place = "Wijk aan Zee"; }, HdrPlace, 1, "Wijk aan Zee"},
        {[](FakeHeader& h) { h.keycode = "B90"; }, HdrKeycode, 1, "B90"},
        {[](FakeHeader& h) { h.player[0] = "M\x81ller"; }, HdrWhite, 1, "M\xFCller"},
    };
    for (const Case& c : cases) {
        FakeGameHeader() = FakeHeader{};
        c.set(FakeGameHeader());
        Delivered got = Get(c.field);
        EXPECT_EQ(got.result, c.result) << "field " << c.field << " " << c.text;
        EXPECT_EQ(got.text, c.text) << "field " << c.field;
    }
}

TEST_F(HeaderFields, ResultInItsThreeForms)
{
    struct Case {
        int32_t driver;
        const char* symbol;
        const char* shortText;
        int32_t pgnOrder;
    };
    const Case cases[] = {
        {1, "1-0", "1-0", 1}, {2, "\xBD-\xBD", "1/2", 3}, {3, "0-1", "0-1", 2},
        {0, "", "*", 0},      {7, "", "*", 0},
    };
    for (const Case& c : cases) {
        header.result = c.driver;
        EXPECT_EQ(Get(HdrResult).text, c.symbol) << c.driver;
        EXPECT_EQ(Get(HdrResult).result, 1);
        EXPECT_EQ(Get(HdrResultShort).text, c.shortText) << c.driver;
        int32_t number = -1;
        EXPECT_EQ(OvGetHeaderInfoInt(FakeOpenGame, HdrResult, &number), 1);
        EXPECT_EQ(number, c.pgnOrder) << c.driver;
    }
}

TEST_F(HeaderFields, StatusLettersAndBits)
{
    int32_t bits = -1;
    EXPECT_EQ(Get(HdrStatus).result, 1);
    EXPECT_EQ(Get(HdrStatus).text, "");
    EXPECT_EQ(OvGetHeaderInfoInt(FakeOpenGame, HdrStatus, &bits), 1);
    EXPECT_EQ(bits, 0);

    header.status = {1, 1, 1, 0, 0, 0, 1, 0};
    EXPECT_EQ(Get(HdrStatus).text, "ADPV");
    OvGetHeaderInfoInt(FakeOpenGame, HdrStatus, &bits);
    EXPECT_EQ(bits, 15);

    header.status = {0, 1, 0, 0, 0, 0, 1, 1};  // set-up, variations, and an unshown flag
    EXPECT_EQ(Get(HdrStatus).text, "PV");
    OvGetHeaderInfoInt(FakeOpenGame, HdrStatus, &bits);
    EXPECT_EQ(bits, OV_STATUS_SETUP | OV_STATUS_VARIATIONS);
}

TEST_F(HeaderFields, PlayerDescriptionsHoldThePresentItems)
{
    struct Case {
        const char* country;
        int32_t elo;
        const char* title;
        const char* description;
    };
    const Case cases[] = {
        {"ARG", 2600, "GM", "White (ARG, 2600, GM)"},
        {"ARG", 0, "GM", "White (ARG, GM)"},
        {"", 0, "GM", "White (GM)"},
        {"", 2600, "", "White (2600)"},
        {"", 2600, "GM", "White (2600, GM)"},
        {"ARG", -1, "", "White (ARG)"},
        {"", 0, "", "White"},
    };
    header.player = {"White", "Black"};
    for (const Case& c : cases) {
        header.country[0] = c.country;
        header.elo[0] = c.elo;
        header.title[0] = c.title;
        EXPECT_EQ(Get(HdrWhiteFull).text, c.description);
        EXPECT_EQ(Get(HdrPlayersFull).text, std::string(c.description) + " - Black");
    }
    EXPECT_EQ(Get(HdrPlayers).text, "White - Black");
    EXPECT_EQ(Get(HdrBlackFull).text, "Black");

    header.player = {"", ""};
    EXPECT_EQ(Get(HdrPlayers).result, 1);
    EXPECT_EQ(Get(HdrPlayers).text, " - ");
}

TEST_F(HeaderFields, TextIsCutAtTheBufferEndAcrossPieces)
{
    header.player = {"White", "Black"};
    header.country = {"ARG", "NED"};
    header.elo = {2600, 2500};
    EXPECT_EQ(Get(HdrPlayersFull, 12).text, "White (ARG,");
    EXPECT_EQ(Get(HdrPlayersFull, 12).result, 1);
    EXPECT_EQ(Get(HdrPlayersFull, 22).text, "White (ARG, 2600) - B");
    EXPECT_EQ(Get(HdrWhite, 1).text, "");
    EXPECT_EQ(Get(HdrWhite, 1).result, 1);
    EXPECT_EQ(Get(HdrWhite, 0).text, std::string(256, 'x'));
    EXPECT_EQ(Get(HdrWhite, -1).text, std::string(256, 'x'));
}

TEST_F(HeaderFields, UnknownCodesAndClosedBuffersGiveNothing)
{
    header.player = {"White", "Black"};
    for (int32_t field : {0, -1, 23, 99, 104, 1000}) {
        EXPECT_EQ(Get(field).result, 0) << field;
        EXPECT_EQ(Get(field).text, "") << field;
        int32_t value = 77;
        EXPECT_EQ(OvGetHeaderInfoInt(FakeOpenGame, field, &value), 0) << field;
        EXPECT_EQ(value, 77);
    }
    char text[16] = "x";
    for (int32_t field : {HdrWhite, HdrMoves, HdrStatus, HdrPlayersFull}) {
        EXPECT_EQ(OvGetHeaderInfo(0, field, text, sizeof text), 0) << field;
        EXPECT_STREQ(text, "");
    }
    EXPECT_EQ(OvGetHeaderInfo(FakeOpenGame, HdrWhite, nullptr, 16), 0);
    int32_t value = 77;
    EXPECT_EQ(OvGetHeaderInfoInt(0, HdrWhiteElo, &value), 0);
    EXPECT_EQ(value, 77);
}

TEST_F(HeaderFields, NumbersComeUnformatted)
{
    header.elo = {-5, 2700};
    header.loadnumber = 42;
    int32_t value = 0;
    EXPECT_EQ(OvGetHeaderInfoInt(FakeOpenGame, HdrWhiteElo, &value), 1);
    EXPECT_EQ(value, -5);
    EXPECT_EQ(OvGetHeaderInfoInt(FakeOpenGame, HdrBlackElo, nullptr), 1);
    OvGetHeaderInfoInt(FakeOpenGame, HdrSourceLoadnumber, &value);
    EXPECT_EQ(value, 42);

    const struct {
        std::array<int32_t, 3> date;
        int32_t packed;
    } dates[] = {
        {{1998, 8, 15}, (1998 << 16) | (8 << 8) | 15},
        {{1998, 13, 15}, (1998 << 16) | 15},
        {{1998, 0, 0}, 1998 << 16},
        {{0x12345, 0x1FF, 0x1FF}, 0x2345FFFF & ~0xFF00},
    };
    for (const auto& d : dates) {
        header.date = d.date;
        EXPECT_EQ(OvGetHeaderInfoInt(FakeOpenGame, HdrDate, &value), 1);
        EXPECT_EQ(value, d.packed) << d.date[0];
    }
    for (int32_t field : {HdrRound, HdrWhiteTime, HdrMoves, HdrWhite}) {
        EXPECT_EQ(OvGetHeaderInfoInt(FakeOpenGame, field, &value), 0) << field;
    }
}

TEST_F(HeaderFields, PutStoresTheElevenTextFieldsInStoreCode)
{
    const struct {
        int32_t field;
        std::function<std::string(const FakeHeader&)> stored;
    } settable[] = {
        {HdrPlace, [](const FakeHeader& h) { return h.place; }},
        {HdrSite, [](const FakeHeader& h) { return h.site; }},
        {HdrAnnotator, [](const FakeHeader& h) { return h.annotator; }},
        {HdrWhite, [](const FakeHeader& h) { return h.player[0]; }},
        {HdrBlack, [](const FakeHeader& h) { return h.player[1]; }},
        {HdrWhiteCountry, [](const FakeHeader& h) { return h.country[0]; }},
        {HdrBlackCountry, [](const FakeHeader& h) { return h.country[1]; }},
        {HdrWhiteTitle, [](const FakeHeader& h) { return h.title[0]; }},
        {HdrBlackTitle, [](const FakeHeader& h) { return h.title[1]; }},
        {HdrKeycode, [](const FakeHeader& h) { return h.keycode; }},
        {HdrRemark, [](const FakeHeader& h) { return h.remark; }},
    };
    for (const auto& s : settable) {
        FakeGameHeader() = FakeHeader{};
        EXPECT_EQ(OvPutHeaderInfo(FakeOpenGame, s.field, "\xC5se \xE9t\xE9"), 1) << s.field;
        EXPECT_EQ(s.stored(FakeGameHeader()), "\x8Fse \x82t\x82") << s.field;
        EXPECT_EQ(Get(s.field).text, "\xC2se \xE9t\xE9") << s.field;
    }

    header.remark = "kept";
    for (int32_t field : std::initializer_list<int32_t>{HdrRound, HdrWhiteElo, HdrBlackElo, HdrWhiteTime, HdrBlackTime, HdrResult,
                          HdrDate, HdrSourceLoadnumber, HdrMoves, HdrStatus, HdrResultShort,
                          HdrPlayers, 0, -1, 200}) {
        EXPECT_EQ(OvPutHeaderInfo(FakeOpenGame, field, "changed"), 0) << field;
    }
    EXPECT_EQ(header.remark, "kept");

    EXPECT_EQ(OvPutHeaderInfo(FakeOpenGame, HdrRemark, std::string(300, 'r').c_str()), 1);
    EXPECT_EQ(header.remark, std::string(255, 'r'));
    EXPECT_EQ(OvPutHeaderInfo(FakeOpenGame, HdrRemark, nullptr), 1);
    EXPECT_EQ(header.remark, "");
    EXPECT_EQ(OvPutHeaderInfo(0, HdrRemark, "x"), 0);
}

}  // namespace
