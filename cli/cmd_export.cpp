// orvan export: games of a game file as PGN, all of them, a range, or the hits
// of a search.
#include <fmt/format.h>

#include <cstdio>
#include <memory>
#include <vector>

#include "cli_error.h"
#include "commands.h"
#include "encoding.h"
#include "game_file.h"
#include "game_range.h"
#include "query_text.h"
#include "search_hits.h"
#include "temp_file.h"

namespace orvan_cli {

namespace {

struct Options {
    std::string gameFile;
    std::vector<std::string> conditions;
    std::string output = "-";
    std::string games;
    std::string encoding = "utf-8";
    bool includeDeleted = false;
};

struct NumberList {
    const std::vector<int32_t>* numbers;
    size_t next = 0;
};

int32_t NextNumber(intptr_t user)
{
    auto& list = *reinterpret_cast<NumberList*>(user);
    return list.next < list.numbers->size() ? (*list.numbers)[list.next++] : 0;
}

std::vector<int32_t> ChooseGames(const GameFile& file, const Options& options)
{
    if (!options.games.empty()) {
        if (!options.conditions.empty())
            throw CliError(kExitUsage, "give either --games or header conditions, not both");
        return ParseGameRange(options.games, file.GameCount());
    }
    sQuery query{};
    query.includeDeleted = options.includeDeleted ? 1 : 0;
    ParseQueryWords(options.conditions, query);
    NoteWordsBeyondAscii(options.conditions);
    std::vector<int32_t> numbers;
    for (const auto& hit : CollectHits(file, query, 0))
        numbers.push_back(hit.number);
    return numbers;
}

// Copies the library's Windows-1252 text from `path` to `out`, converted to
// UTF-8 unless `keep1252`.
void CopyConverted(const std::string& path, bool keep1252, const std::function<void(std::string_view)>& out)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> in(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!in)
        throw CliError(kExitFailed, path + ": cannot read the exported text");
    std::vector<char> buffer(1 << 16);
    size_t got = 0;
    while ((got = std::fread(buffer.data(), 1, buffer.size(), in.get())) > 0) {
        const std::string_view piece(buffer.data(), got);
        if (keep1252)
            out(piece);
        else
            out(Windows1252ToUtf8(piece));
    }
}

}  // namespace

Command AddExportCommand(CLI::App& root)
{
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("export", "Write games as PGN");
    app->add_option("FILE", options->gameFile, "The game file to export from")->required();
    app->add_option("CONDITION", options->conditions,
                    "Export the games these header conditions find (see orvan search --help)");
    app->add_option("-o,--output", options->output, "The PGN file to write; - for standard output")
        ->capture_default_str();
    app->add_option("-g,--games", options->games, "Game numbers, e.g. 5  or 1-10,15  or 20-");
    app->add_option("-e,--encoding", options->encoding, "Encoding of the PGN text: utf-8 or windows-1252")
        ->capture_default_str();
    app->add_flag("--include-deleted", options->includeDeleted, "Export games marked deleted too");
    app->footer(
        "Without --games or conditions every game not marked deleted is written.\n"
        "The output file appears only when the export is complete. Exit code 1 when no game matches.");
    return {app, [options] {
                const Encoding encoding = ParseEncoding(options->encoding, "--encoding");
                if (encoding == Encoding::Auto)
                    throw CliError(kExitUsage, "--encoding: choose utf-8 or windows-1252 for the output");
                const GameFile file = GameFile::Open(options->gameFile);
                const auto numbers = ChooseGames(file, *options);
                if (numbers.empty())
                    throw CliError(kExitNoHits, "no game to export");

                TempFile exported{std::string()};
                exported.Close();
                NumberList list{&numbers};
                const int32_t written = OvExportGames(exported.Path().c_str(), file.Handle(), NextNumber, 0,
                                                      reinterpret_cast<intptr_t>(&list));
                if (written == 0)
                    throw CliError(kExitFailed, "the library wrote no game");
                const bool keep1252 = encoding == Encoding::Windows1252;
                if (options->output == "-") {
                    CopyConverted(exported.Path(), keep1252, [](std::string_view text) {
                        std::fwrite(text.data(), 1, text.size(), stdout);
                    });
                } else {
                    TempFile target(options->output);
                    CopyConverted(exported.Path(), keep1252, [&](std::string_view text) { target.Write(text); });
                    target.Commit();
                    fmt::print(stderr, "{}: {} games written\n", options->output, written);
                }
                if (written < static_cast<int32_t>(numbers.size()))
                    fmt::print(stderr, "{} games were left out: they exceed the PGN record's limits\n",
                               numbers.size() - static_cast<size_t>(written));
                return 0;
            }};
}

}  // namespace orvan_cli
