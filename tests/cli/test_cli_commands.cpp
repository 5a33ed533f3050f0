// Every command of the orvan host run as a person runs it: on the sample
// games the project ships, with their output and exit codes checked.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

const std::string kSample = ORVAN_SOURCE_DIR "/cli/tour/sample.pgn";
constexpr int kSampleGames = 36;

struct CliRun {
    int code;
    std::string out, err;
};

std::string ReadFile(const fs::path& path)
{
    std::stringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

class OrvanCommands : public ::testing::Test {
protected:
    void SetUp() override
    {
        dir_ = fs::temp_directory_path() / fmt::format("orvan-cli-{}", ::getpid());
        fs::remove_all(dir_);
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }

    // Runs orvan with `arguments` (shell words) in the test's directory.
    CliRun Orvan(const std::string& arguments)
    {
        const auto out = dir_ / "stdout", err = dir_ / "stderr";
        const std::string command =
            fmt::format("cd '{}' && '{}' {} </dev/null >'{}' 2>'{}'", dir_.string(), ORVAN_CLI, arguments,
                        out.string(), err.string());
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
    }

    // A game file holding the sample games.
    void ImportSample() { ASSERT_EQ(Orvan(fmt::format("import --create games.ovg '{}'", kSample)).code, 0); }

    fs::path dir_;
};

// Each command on the sample file, or on bad input: its exit code, and a
// fragment of what it prints; errors take at most two lines. Import, export
// and reimport keep every game's text; deletion marks hide games from search
// and export until undeleted.
TEST_F(OrvanCommands, CommandsGiveTheirExitCodeAndOutput)
{
    ImportSample();
    const std::string game = "[Event \"E\"]\n[White \"M{}ller\"]\n[Black \"B\"]\n[Result \"1-0\"]\n\n1. e4 e5 1-0\n";
    std::ofstream(dir_ / "utf8.pgn") << fmt::format(fmt::runtime(game), "\xC3\xBC");
    std::ofstream(dir_ / "cp1252.pgn") << fmt::format(fmt::runtime(game), "\xFC");
    std::ofstream(dir_ / "notes.txt") << "just some text\n";
    // The second game has no moves and a FEN that is no position: the reader skips it.
    std::ofstream(dir_ / "two.pgn") <<
              "[White \"A\"]\n\n1. e4 e5 1-0\n\n[White \"B\"]\n[SetUp \"1\"]\n[FEN \"garbage\"]\n\n*\n\n"
              "[White \"C\"]\n\n1. d4 d5 0-1\n";
    const struct {
        std::string arguments;
        int code;
        std::string says;
    } cases[] = {
        {"create double.ovg", 0, ""},
        {fmt::format("import double.ovg '{}' '{}'", kSample, kSample), 0, "double.ovg: 72 games"},
        {"export double.ovg --games 1-36 -o all.pgn", 0, ""},
        {"import --create again.ovg all.pgn", 0, ""},
        {"export again.ovg -o twice.pgn", 0, ""},
        {"delete again.ovg 1-3", 0, "deleted 3 games"},
        {"stats again.ovg", 0, "33 games counted, 3 marked deleted"},
        {"search again.ovg round=2", 1, ""},
        {"search again.ovg --include-deleted round=2", 0, "2D"},
        {"export again.ovg -o hidden.pgn", 0, ""},
        {"undelete again.ovg 2", 0, ""},
        {"search again.ovg round=2", 0, ""},
        {"import --create two.ovg two.pgn", 0, "2 games stored, 1 skipped"},
        {"import --create enc.ovg utf8.pgn cp1252.pgn", 0, "enc.ovg: 2 games"},
        // Both encodings come out in UTF-8, not escaped; on request in Windows-1252.
        {"export enc.ovg --games 2", 0, "[White \"M\xC3\xBCller\"]"},
        {"search enc.ovg --json white^=M", 0, "\"white\": \"M\xC3\xBCller\""},
        {"export enc.ovg --games 1 --encoding windows-1252", 0, "[White \"M\xFCller\"]"},
        // The store's comparison never matches the \xC3\xBC itself: the person is told the way round.
        {"search enc.ovg white=M\xC3\xBCller", 1, "white~ller"},
        // A Windows-1252 file read as UTF-8 by choice keeps no wrong bytes.
        {"import --create forced.ovg --encoding utf-8 cp1252.pgn", 0, "forced.ovg: 1 game"},
        {"export forced.ovg", 0, "[White \"M?ller\"]"},
        {"search games.ovg white~ller", 0, "M\xC3\xBCller"},
        // After 1. d4 c6 2. Nd2 only the first game stands here.
        {"search games.ovg --fen 'rnbqkbnr/pp1ppppp/2p5/8/3P4/8/PPPNPPPP/R1BQKBNR b KQkq - 1 2'", 0, "1 game\n"},
        {"show games.ovg 1 --ply 3", 0, "(1... d5 2. c4 {the Queen's Gambit})"},
        {"show games.ovg 1 --ply 3", 0, "FEN rnbqkbnr/pp1ppppp/2p5/8/3P4/8/PPPNPPPP/R1BQKBNR b KQkq - 0 2"},
        {"stats games.ovg", 0, "1950s"},
        {"search missing.ovg", 3, "orvan search: missing.ovg: no such file"},
        {"search notes.txt", 3, "orvan search: notes.txt: not a game file"},
        {"search games.ovg --fen '8/8/8/8/8/8/8/8 w - -'", 2, "bad FEN '8/8/8/8/8/8/8/8 w - -': a king is missing"},
        {"search games.ovg colour=white", 2, "bad condition 'colour=white': unknown field 'colour'"},
        {"search games.ovg white=A --fen '4k3/8/8/8/8/8/8/4K3 w - -'", 2, "give one of header conditions, --fen or --key"},
        {"search games.ovg --key B90", 3, "games.ovg: has no opening tree"},
        {"show games.ovg 99", 2, "bad game range '99': the file has games 1 to 36"},
        {"import games.ovg --encoding ebcdic notes.txt", 2, "unknown encoding 'ebcdic'"},
        {"create games.ovg", 2, "already exists"},
        {"export games.ovg -o nodir/out.pgn", 4, "nodir/out.pgn: cannot create a file there"},
        {"export games.ovg white=Nobody -o none.pgn", 1, "no game to export"},
        {"frobnicate", 2, "frobnicate"},
    };
    for (const auto& c : cases) {
        const CliRun run = Orvan(c.arguments);
        EXPECT_EQ(run.code, c.code) << c.arguments << "\n" << run.err;
        EXPECT_NE((run.out + run.err).find(c.says), std::string::npos) << c.arguments << "\n" << run.out << run.err;
        EXPECT_LE(std::count(run.err.begin(), run.err.end(), '\n'), c.code >= 2 ? 2 : 99) << run.err;
        EXPECT_EQ(run.err.find('\r'), std::string::npos) << "not a terminal: plain lines, no bar";
    }
    EXPECT_TRUE(ReadFile(dir_ / "all.pgn") == ReadFile(dir_ / "twice.pgn"));
    const std::string hidden = ReadFile(dir_ / "hidden.pgn");
    EXPECT_TRUE(hidden.find("[Round \"4\"]") != std::string::npos && hidden.find("[Round \"2\"]") == std::string::npos);
    // Nothing half written: no output file from a failed export, no partial file left behind.
    EXPECT_FALSE(fs::exists(dir_ / "none.pgn"));
    for (const auto& entry : fs::directory_iterator(dir_))
        EXPECT_EQ(entry.path().filename().string().find(".partial-"), std::string::npos) << entry.path();
}

// The sample's ECO tags were set by another classifier from the same ECO file:
// the opening tree must agree with it on every game.
TEST_F(OrvanCommands, OpeningTreeClassifiesBrowsesSearchesAndSorts)
{
    const char* ecoFile = "/usr/share/pgn-extract/eco.pgn";
    if (!fs::exists(ecoFile))
        GTEST_SKIP() << ecoFile << " is missing (Debian package pgn-extract)";
    ASSERT_EQ(Orvan("classify games.ovg").code, 3);
    const std::string build = fmt::format("'{}' '{}' >/dev/null", ECO_TREE_BUILDER, (dir_ / "games.ovg").string());
    ASSERT_EQ(std::system(build.c_str()), 0);
    ImportSample();

    CliRun run = Orvan("classify games.ovg");
    ASSERT_EQ(run.code, 0) << run.err;
    std::istringstream rows(run.out);
    std::string row;
    int compared = 0;
    while (std::getline(rows, row)) {
        std::istringstream cells(row);
        std::string number, white, black, tag, key, code;
        cells >> number >> white >> black >> tag >> key >> code;
        if (number.empty() || !std::isdigit(static_cast<unsigned char>(number[0])) || tag.size() != 3)
            continue;
        EXPECT_EQ(code, tag) << row;
        ++compared;
    }
    EXPECT_EQ(compared, kSampleGames);

    EXPECT_NE(Orvan("keys games.ovg").out.find(fmt::format("{} with the keys below", kSampleGames)), std::string::npos);
    EXPECT_NE(Orvan("keys games.ovg B23").out.find("line: 1. e4 c5 2. Nc3\n"), std::string::npos);
    EXPECT_EQ(Orvan("keys games.ovg Z99").code, 2);
    // Games imported into a file with a tree are filed under its keys.
    EXPECT_NE(Orvan("search games.ovg --key C41").out.find("Müller  Anand"), std::string::npos);

    run = Orvan("sort games.ovg --by date --descending --limit 2");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_LT(run.out.find("2020.12.09"), run.out.find("2018.11.08")) << run.out;
    EXPECT_EQ(run.out.find("1950"), std::string::npos);
}

}  // namespace
