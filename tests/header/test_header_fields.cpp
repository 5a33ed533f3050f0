// Header fields by field code on a game buffer of the real store.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "frame/locale_tables.h"
#include "orvan.h"
#include "frame/owned_game_buffer.h"
#include "siblings/game_driver.h"

namespace {

// The result of a call and the text it delivered.
using Delivered = std::pair<int32_t, std::string>;

class HeaderFields : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_NE(g, 0u);
        NewGameErase(g);
        LocaleSource locale;
        locale.shortDatePictures = {"dd/MM/yyyy"};
        LoadLocaleTables(locale);
    }

    Delivered Get(int32_t field, int32_t size = 256)
    {
        char text[256];
        std::memset(text, 'x', sizeof text);
        int32_t result = OvGetHeaderInfo(g, field, text, size);
        return {result, std::string(text, strnlen(text, sizeof text))};
    }

    int32_t Number(int32_t field)
    {
        int32_t value = -999;
        EXPECT_EQ(OvGetHeaderInfoInt(g, field, &value), 1) << field;
        return value;
    }

    OwnedGameBuffer buffer;
    const OvGameBuffer g = buffer.Get();
};

TEST_F(HeaderFields, NumbersTimesAndDatesHaveTextOnlyInTheirRange)
{
    const struct { std::function<void(OvGameBuffer)> set; int32_t field; Delivered delivered; } cases[] = {
        {[](OvGameBuffer g) { IGGamePutElo(g, 1, -5); }, HdrBlackElo, {0, ""}},
        {[](OvGameBuffer g) { IGGamePutTime(g, 1, 5999); }, HdrBlackTime, {1, "99:59"}},
        {[](OvGameBuffer g) { IGGamePutTime(g, 1, 6000); }, HdrBlackTime, {0, ""}},
        {[](OvGameBuffer g) { const int32_t d[3] = {1998, 8, 0}; IGGamePutDate(g, d); }, HdrDate, {1, "08/1998"}},
        {[](OvGameBuffer g) { const int32_t d[3] = {1998, 13, 5}; IGGamePutDate(g, d); }, HdrDate, {1, ""}},
        {[](OvGameBuffer g) { IGGamePutPlayer(g, 0, "M\x81ller"); }, HdrWhite, {1, "M\xFCller"}},
    };
    for (const auto& c : cases) {
        NewGameErase(g);
        c.set(g);
        EXPECT_EQ(Get(c.field), c.delivered) << "field " << c.field;
    }
    // Three plies make two moves.
    NewGameErase(g);
    const MoveXY shuffle[3] = {{7, 1, 6, 3, 0}, {7, 8, 6, 6, 0}, {6, 3, 7, 1, 0}};
    for (const MoveXY& move : shuffle)
        AcceptMove(g, &move);
    EXPECT_EQ(Get(HdrMoves), (Delivered{1, "2"}));
}

TEST_F(HeaderFields, ResultAndStatusAsTextAndNumber)
{
    const struct { int32_t driver; const char *symbol, *shortText; int32_t pgnOrder; } cases[] = {
        {1, "1-0", "1-0", 1}, {2, "\xBD-\xBD", "1/2", 3}, {3, "0-1", "0-1", 2}, {0, "", "*", 0}};
    for (const auto& c : cases) {
        IGGamePutResult(g, c.driver, 0);
        EXPECT_EQ(Get(HdrResult), (Delivered{1, c.symbol}));
        EXPECT_EQ(Get(HdrResultShort), (Delivered{1, c.shortText}));
        EXPECT_EQ(Number(HdrResult), c.pgnOrder);
    }
    for (int32_t status : {int32_t{OvgStatusSetUp}, int32_t{OvgStatusVariations}, 7 /* not shown */,
                           int32_t{OvgStatusDeleted}, int32_t{OvgStatusAnnotated}})
        IGGamePutStatus(g, status, 1);
    EXPECT_EQ(Get(HdrStatus).second, "ADPV");
    EXPECT_EQ(Number(HdrStatus), 15);
}

TEST_F(HeaderFields, PlayerDescriptionsHoldThePresentItems)
{
    const struct { const char* country; int32_t elo; const char *title, *description; } cases[] = {
        {"ARG", 0, "GM", "White (ARG, GM)"}, {"", -1, "", "White"}};
    IGGamePutPlayer(g, 0, "White");
    IGGamePutPlayer(g, 1, "Black");
    for (const auto& c : cases) {
        IGGamePutCountry(g, 0, c.country);
        IGGamePutElo(g, 0, c.elo);
        IGGamePutTitle(g, 0, c.title);
        EXPECT_EQ(Get(HdrWhiteFull).second, c.description);
        EXPECT_EQ(Get(HdrPlayersFull).second, std::string(c.description) + " - Black");
    }
}

TEST_F(HeaderFields, UnknownCodesAndFieldsWithoutANumberGiveNothingOthersTheirNumber)
{
    IGGamePutPlayer(g, 0, "White");
    int32_t value = 77;
    for (int32_t field : {-1, 23}) {
        EXPECT_EQ(Get(field), (Delivered{0, ""})) << field;
        EXPECT_EQ(OvGetHeaderInfoInt(g, field, &value), 0) << field;
        EXPECT_EQ(OvPutHeaderInfo(g, field, "x"), 0) << field;
    }
    for (int32_t field : {HdrWhiteTime, HdrMoves, HdrPlayers})
        EXPECT_EQ(OvGetHeaderInfoInt(g, field, &value), 0) << field;
    EXPECT_EQ(value, 77);

    // Numbers come as stored; fields wider than their bits are cut to them.
    IGGamePutElo(g, 0, -5);
    EXPECT_EQ(Number(HdrWhiteElo), -5);
    const int32_t date[3] = {0x12345, 0x1FF, 0x1FF};
    IGGamePutDate(g, date);
    EXPECT_EQ(Number(HdrDate), 0x234500FF);
}

TEST_F(HeaderFields, PutStoresTheTextFieldsInStoreCode)
{
    for (int32_t field : {HdrSite, HdrBlack, HdrWhiteCountry, HdrBlackTitle, HdrKeycode, HdrRemark}) {
        EXPECT_EQ(OvPutHeaderInfo(g, field, "\xC5se \xE9t\xE9"), 1) << field;
        EXPECT_EQ(Get(field).second, "\xC2se \xE9t\xE9") << field;  // Å has no way back
    }
    EXPECT_STREQ(IGGameGetPlayer(g, 1, nullptr), "\x8Fse \x82t\x82");

    for (int32_t field : {HdrRound, HdrWhiteElo, HdrResult, HdrDate, HdrMoves, HdrPlayers})
        EXPECT_EQ(OvPutHeaderInfo(g, field, "changed"), 0) << field;
    EXPECT_STREQ(IGGameGetRemark(g, nullptr), "\x8Fse \x82t\x82");

    EXPECT_EQ(OvPutHeaderInfo(g, HdrRemark, nullptr), 1);
    EXPECT_STREQ(IGGameGetRemark(g, nullptr), "");
}

}  // namespace
