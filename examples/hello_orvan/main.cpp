// hello_orvan: a host of liborvan in a page. It creates a game file, stores a
// game read from PGN text, reads it back, and walks its moves.
#include <orvan.h>

#include <cstdio>
#include <cstring>
#include <string>

int main(int argc, char** argv)
{
    const std::string path = argc > 1 ? argv[1] : "hello.ovg";
    const char pgn[] =
        "[Event \"Example\"]\n[White \"Anderssen\"]\n[Black \"Kieseritzky\"]\n[Result \"1-0\"]\n\n"
        "1. e4 e5 2. f4 exf4 3. Bc4 Qh4+ 4. Kf1 b5 1-0\n";

    if (OvGetVersion(nullptr, nullptr) == 0) {
        std::fprintf(stderr, "the game store or the key database is too old\n");
        return 1;
    }
    const OvGameFile file = OvCreateGamefile(path.c_str());
    const OvGameBuffer game = OvAllocGameBuffer();
    if (file == 0 || game == 0) {
        std::fprintf(stderr, "cannot create %s\n", path.c_str());
        return 1;
    }

    // PGN text goes in through a memory block.
    HGLOBAL text = GlobalAlloc(GHND, sizeof pgn);
    std::memcpy(GlobalLock(text), pgn, sizeof pgn);
    GlobalUnlock(text);
    OvMemReadPgnGame(game, text, 0, nullptr);
    GlobalFree(text);
    const int32_t number = OvWriteGame(game, file, nullptr);

    // Read it back and walk the main line.
    OvReadGame(game, file, number);
    char players[256];
    OvGetHeaderInfo(game, HdrPlayers, players, sizeof players);
    std::printf("game %d of %d: %s\n", number, OvGetGamesCount(file), players);
    for (int32_t ply = 0; OvGetNextMove(game) != 0; ++ply) {
        sPosition position;
        OvGetCurrentPos(game, &position);
        const uint32_t move = static_cast<uint32_t>(OvGetNextMove(game));
        char san[OV_MOVE_TEXT_SIZE];
        OvMoveToText(move, static_cast<uint32_t>(OvGetMoveInfo(&position, move)), san,
                     OV_TEXT_PROMOTION_SIGN, nullptr);
        std::printf("%s%s ", ply % 2 == 0 ? (std::to_string(ply / 2 + 1) + ". ").c_str() : "", san);
        OvPlayMoves(game, 1);
    }
    std::printf("\n");

    OvFreeGameBuffer(game);
    OvCloseGamefile(file);
    return 0;
}
