// A search reading batches on one thread while another thread writes games
// to the same file, each new game bringing new names.
#include <atomic>
#include <thread>

#include "tests/store/game_samples.h"

namespace {

TEST(Threads, BatchesStayConsistentBesideWrites)
{
    TempDir dir;
    FileHandle file(dir.File("shared.ovg"), 1);
    ASSERT_NE(file.id, 0u);
    constexpr int32_t Games = 2500;
    std::atomic<bool> done{false};
    std::thread writer([&] {
        GameHandle game;
        for (int32_t n = 1; n <= Games; ++n) {
            if (n == 1000)
                OvgFileAction(file, 1);
            WriteSample(game, size_t(n), n);
            IGGamePutPlayer(game, 1, ("Player " + std::to_string(n)).c_str());
            if (OvgWriteGame(game, file, 0, nullptr) != n)
                break;
            if (n == 2000)
                OvgFileAction(file, 0);
        }
        done = true;
    });
    GameHandle reader;
    std::vector<uint8_t> buffer(65536);
    std::vector<uint32_t> places(101);
    int64_t checked = 0;
    for (bool last = false; !last;) {
        last = done.load();
        for (int32_t first = 0;;) {
            const int32_t n = OvgReadGames(file, first, buffer.data(), places.data(), 65536, 100);
            ASSERT_GE(n, 0);
            if (n == 0)
                break;
            for (int32_t k = 0; k < n; ++k) {
                const int32_t number = first + k + 1;
                ASSERT_EQ(GetGameHeader(reader, buffer.data() + places[k] - places[0], 0, 1), 1);
                ASSERT_EQ(IGGameGetRound(reader), number);
                ASSERT_EQ(std::string(IGGameGetPlayer(reader, 1, nullptr)), "Player " + std::to_string(number));
                ++checked;
            }
            first += n;
        }
    }
    writer.join();
    EXPECT_EQ(OvgGetNumberOfGames(file), Games);
    EXPECT_GE(checked, Games);
}

}  // namespace
