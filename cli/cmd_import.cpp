// orvan import: PGN files into a game file, with progress.
#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <vector>

#include "cli_error.h"
#include "commands.h"
#include "game_file.h"
#include "key_database.h"
#include "pgn_source.h"
#include "progress.h"

namespace orvan_cli {

namespace {

struct Options {
    std::string gameFile;
    std::vector<std::string> pgnFiles;
    std::string encoding = "auto";
    std::string pieceLetters;
    bool create = false;
    bool tagsOnly = false;
};

int32_t ReportProgress(uint32_t stored, intptr_t user)
{
    reinterpret_cast<ImportProgress*>(user)->Update(stored);
    return 1;
}

// Imports one PGN file; returns the games stored.
int64_t ImportOne(const GameFile& file, const std::string& pgnPath, const Options& options)
{
    const PgnSource source(pgnPath, ParseEncoding(options.encoding, "--encoding"));
    const int32_t before = file.GameCount();
    ImportProgress progress(stderr, std::filesystem::path(pgnPath).filename().string(), source.GameCount());
    const uint32_t flags = options.tagsOnly ? OV_PGN_TAGS_ONLY : 0;
    const char* letters = options.pieceLetters.empty() ? nullptr : options.pieceLetters.c_str();
    int32_t result = 0;
    {
        BulkOperation bulk(file, OV_BULK_WRITE);
        result = OvPgnImport(source.LibraryPath().c_str(), file.Handle(), flags, letters, ReportProgress,
                             reinterpret_cast<intptr_t>(&progress));
    }
    if (result == 1)
        throw CliError(kExitBadInput, pgnPath + ": cannot be opened");
    if (result != 0)
        throw CliError(kExitFailed, pgnPath + ": no memory for the import");
    const int64_t stored = file.GameCount() - before;
    progress.Finish(stored);
    return stored;
}

}  // namespace

Command AddImportCommand(CLI::App& root)
{
    auto options = std::make_shared<Options>();
    CLI::App* app = root.add_subcommand("import", "Import PGN files into a game file");
    app->add_option("FILE", options->gameFile, "The game file that receives the games")->required();
    app->add_option("PGN", options->pgnFiles, "One or more PGN files")->required();
    app->add_option("-e,--encoding", options->encoding,
                    "Text encoding of the PGN files: auto (UTF-8 when the text is valid UTF-8, "
                    "else Windows-1252), utf-8 or windows-1252")
        ->capture_default_str();
    app->add_option("--piece-letters", options->pieceLetters,
                    "The letters of knight, bishop, rook, queen and king in the text, e.g. SLTDK");
    app->add_flag("-c,--create", options->create, "Create the game file when it does not exist");
    app->add_flag("--tags-only", options->tagsOnly, "Store the headers only, without moves");
    app->footer(
        "Progress goes to standard error: a bar on a terminal, a line every few seconds otherwise.\n"
        "Games the reader cannot place (no moves, a bad FEN) are skipped; a line is cut at an\n"
        "illegal move. Use 'orvan -v import ...' to see the reader's notes.");
    return {app, [options] {
                if (options->pieceLetters.size() != 0 && options->pieceLetters.size() != 5)
                    throw CliError(kExitUsage, "--piece-letters needs 5 letters, e.g. NBRQK");
                ParseEncoding(options->encoding, "--encoding");
                std::error_code error;
                const bool exists = std::filesystem::exists(options->gameFile, error);
                // Games imported into a file with an opening tree are filed under its keys.
                const KeyDatabase database(options->gameFile, false);
                GameFile file = exists || !options->create ? GameFile::Open(options->gameFile)
                                                           : GameFile::Create(options->gameFile, false);
                int64_t total = 0;
                for (const auto& pgn : options->pgnFiles)
                    total += ImportOne(file, pgn, *options);
                if (options->pgnFiles.size() > 1)
                    fmt::print(stderr, "{} games stored in all\n", total);
                fmt::print("{}: {} games\n", file.Path(), file.GameCount());
                return 0;
            }};
}

}  // namespace orvan_cli
