#include "hardening/generated_games.h"

#include <unistd.h>

#include <array>
#include <fstream>

namespace {

constexpr std::array<const char*, 4> Openings = {
    "1. e4 e5 2. Nf3 Nc6 3. Bb5 a6 4. Ba4 Nf6 5. O-O Be7 6. Re1 b5 7. Bb3 d6 8. c3 O-O",
    "1. d4 Nf6 2. c4 e6 3. Nc3 Bb4 4. e3 O-O 5. Bd3 d5 6. Nf3 c5 7. O-O Nc6",
    "1. e4 c5 2. Nf3 d6 3. d4 cxd4 4. Nxd4 Nf6 5. Nc3 a6 6. Be3 e5 7. Nb3 Be6 8. f3 Be7 9. Qd2 O-O",
    "1. c4 e5 2. Nc3 Nf6 3. Nf3 Nc6 4. g3 d5 5. cxd5 Nxd5 6. Bg2 Nb6 7. O-O Be7 8. d3 O-O 9. a3 Be6 "
    "10. b4 f6 11. Rb1 Qe8 12. Ne4 Qf7 13. Nc5 Bxc5 14. bxc5 Nd5",
};

std::string HeaderText(OvGameBuffer game, int32_t field)
{
    char text[64];
    OvGetHeaderInfo(game, field, text, sizeof text);
    return text;
}

}  // namespace

std::string GeneratedGame(int32_t number)
{
    const std::string n = std::to_string(number);
    return "[Event \"Hardening\"]\n[White \"White " + n + "\"]\n[Black \"Black " + n + "\"]\n[Round \"" + n +
           "\"]\n[Result \"*\"]\n\n" + Openings[number % Openings.size()] + " *\n\n";
}

void WriteGeneratedGames(const std::filesystem::path& path, int32_t first, int32_t count)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    for (int32_t number = first; number < first + count; ++number)
        out << GeneratedGame(number);
}

std::string CompareWithGenerated(OvGameFile file, int32_t count)
{
    const OvGameBuffer game = OvAllocGameBuffer();
    std::string fault;
    for (int32_t number = 1; number <= count && fault.empty(); ++number) {
        const std::string n = std::to_string(number);
        if (OvReadGameHeader(game, file, number) != 1)
            fault = "game " + n + " cannot be read";
        else if (HeaderText(game, HdrWhite) != "White " + n || HeaderText(game, HdrBlack) != "Black " + n)
            fault = "game " + n + " is " + HeaderText(game, HdrWhite) + " - " + HeaderText(game, HdrBlack);
    }
    OvFreeGameBuffer(game);
    return fault;
}

ScratchDirectory::ScratchDirectory(const std::string& name)
    : path_(std::filesystem::temp_directory_path() / (name + "-" + std::to_string(getpid())))
{
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

ScratchDirectory::~ScratchDirectory()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}
