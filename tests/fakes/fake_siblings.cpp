#include "fakes/fake_siblings.h"

#include <string>

#include "siblings/game_driver.h"
#include "siblings/key_database.h"

FakeSiblings& Fakes()
{
    static FakeSiblings fakes;
    return fakes;
}

void ResetFakes()
{
    Fakes() = FakeSiblings{};
}

namespace {

void Record(std::string call)
{
    Fakes().calls.push_back(std::move(call));
}

int32_t ReportVersion(uint32_t* version, uint32_t* second, uint32_t word, int32_t result)
{
    if (version != nullptr)
        *version = word;
    if (second != nullptr)
        *second = 0;
    return result;
}

}  // namespace

int32_t IGInstallGameDriver(int32_t mode)
{
    Record("IGInstallGameDriver(" + std::to_string(mode) + ")");
    return 0;
}

int32_t IGGameDriverInit(int32_t maxGames)
{
    Record("IGGameDriverInit(" + std::to_string(maxGames) + ")");
    return 0;
}

int32_t IGGameDriverFini(void)
{
    Record("IGGameDriverFini()");
    return 0;
}

int32_t IGRemoveGameDriver(void)
{
    Record("IGRemoveGameDriver()");
    return 0;
}

int32_t OvgGetVersion(uint32_t* version, uint32_t* second)
{
    Record("OvgGetVersion");
    return ReportVersion(version, second, Fakes().gameVersionWord, Fakes().gameVersionResult);
}

int32_t OvkGetVersion(uint32_t* version, uint32_t* second)
{
    Record("OvkGetVersion");
    return ReportVersion(version, second, Fakes().keyVersionWord, Fakes().keyVersionResult);
}
