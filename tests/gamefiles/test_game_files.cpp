#include <string>

#include "gamefiles_fixture.h"
#include "support/capture.h"

namespace {

using GameFiles = FakeSiblingsTest;

TEST_F(GameFiles, CreateRemovesOldKeyFilesThenMakesTheFile)
{
    Fakes().results["OvgOpenGamefile"] = 42;
    Fakes().results["OvkDeleteDatabaseFiles"] = 0;  // ignored
    EXPECT_EQ(OvCreateGamefile("/data/games/new.ovg"), 42u);
    EXPECT_EQ(OvCreateGamefile("new.ovg"), 42u) << "without a directory the path is the index path";
    EXPECT_EQ(Fakes().calls, (CallLog{R"(OvkDeleteDatabaseFiles("/data/games/new.ovg", "/data/games/OvIndex/", 7))",
                                      R"(OvgOpenGamefile("/data/games/new.ovg", 1))",
                                      R"(OvkDeleteDatabaseFiles("new.ovg", "new.ovg", 7))",
                                      R"(OvgOpenGamefile("new.ovg", 1))"}));

    ResetFakes();
    TraceCapture trace;
    EXPECT_EQ(OvCreateGamefile(("/" + std::string(300, 'd') + "/new.ovg").c_str()), 0u);
    EXPECT_EQ(OvCreateGamefile(nullptr), 0u);
    EXPECT_TRUE(Fakes().calls.empty()) << "no key files may be removed under a cut name";
    ASSERT_EQ(trace.lines.size(), 1u);
    EXPECT_EQ(trace.lines[0].rfind("OrvanDll: OvCreateGamefile: no room for the index path", 0), 0u);
}

TEST_F(GameFiles, FileStatusKeepsOnlyOpenAndBulkBits)
{
    const struct {
        int32_t isDatabaseFile, answer, expected;
        const char* asked;
    } cases[] = {{0, 0xFF, 3, "IGFileStatus(5, 0)"}, {0, 4, 0, "IGFileStatus(5, 0)"},
                 {0, -1, 3, "IGFileStatus(5, 0)"},   {0, 2, 2, "IGFileStatus(5, 0)"},
                 {1, 0xFF, 3, "DbsFileStatus(0)"},   {7, 5, 1, "DbsFileStatus(0)"}};
    for (const auto& c : cases) {
        ResetFakes();
        Fakes().results["IDIsDatabaseGamefile"] = c.isDatabaseFile;
        Fakes().results["IGFileStatus"] = c.answer;
        Fakes().results["DbsFileStatus"] = c.answer;
        EXPECT_EQ(OvFileStatus(5, 0), c.expected) << c.asked << " answering " << c.answer;
        EXPECT_EQ(Fakes().calls, (CallLog{"IDIsDatabaseGamefile(5)", c.asked}));
    }
}

TEST_F(GameFiles, BulkModeTwoTakesTheWriteLockEveryOtherModeStartsPlainly)
{
    Fakes().results["OvgFileAction"] = 0;  // the result is not passed on
    CallLog expected;
    for (int32_t mode : {0, 1, 2, 3, -2, 0x102}) {
        EXPECT_EQ(OvStartBulkOperation(9, mode), 1);
        EXPECT_EQ(OvEndBulkOperation(9), 1);
        expected.push_back(mode == 2 ? "OvgFileAction(9, 2)" : "OvgFileAction(9, 1)");
        expected.push_back("OvgFileAction(9, 0)");
    }
    EXPECT_EQ(Fakes().calls, expected);
}

}  // namespace
