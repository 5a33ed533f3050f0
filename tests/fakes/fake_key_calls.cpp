// Recording fakes of the key browsing, classification and sort index calls.
#include "fakes/fake_key_calls.h"

#include <algorithm>
#include <cstring>

#include "fakes/fake_siblings.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

FakeKeyStore& KeyFakes()
{
    static FakeKeyStore store;
    return store;
}

void ResetKeyFakes()
{
    KeyFakes() = FakeKeyStore{};
}

namespace {

int32_t CopyText(const std::string& source, char* text, int32_t size)
{
    if (text == nullptr || size <= 0)
        return 0;
    const size_t length = std::min(source.size(), size_t(size) - 1);
    std::memcpy(text, source.data(), length);
    text[length] = '\0';
    return 1;
}

}  // namespace

int32_t OvkGetFirstKey(int32_t parent, int32_t order) FAKE_ANSWER(OvkGetFirstKey, 0, FakeArg(parent), FakeArg(order))
int32_t OvkGetNextKey(int32_t key, int32_t order) FAKE_ANSWER(OvkGetNextKey, 0, FakeArg(key), FakeArg(order))
int32_t OvkGetPreviousKey(int32_t key, int32_t order) FAKE_ANSWER(OvkGetPreviousKey, 0, FakeArg(key), FakeArg(order))

int32_t DbsGetKeyMove(int32_t key, int32_t reserved, int32_t which)
    FAKE_ANSWER(DbsGetKeyMove, 0, FakeArg(key), FakeArg(reserved), FakeArg(which))

int32_t OvkGetKeyPosition(int32_t key, BoardRecord* board)
{
    RecordCall("OvkGetKeyPosition", {FakeArg(key), FakeArg(board)});
    if (board != nullptr)
        *board = KeyFakes().keyBoard;
    return FakeResult("OvkGetKeyPosition", 1);
}

int32_t DbsGetKeycode(int32_t key, char* text)
{
    RecordCall("DbsGetKeycode", {FakeArg(key), FakeArg(static_cast<const void*>(text))});
    return CopyText(KeyFakes().keycode, text, OvgTextSize);
}

int32_t DbsGetRemark(int32_t key, char* text)
{
    RecordCall("DbsGetRemark", {FakeArg(key), FakeArg(static_cast<const void*>(text))});
    return CopyText(KeyFakes().remark, text, OvgTextSize);
}

int32_t OvkGetKeyName(int32_t key, char* text, int32_t reserved, int32_t size)
{
    RecordCall("OvkGetKeyName", {FakeArg(key), FakeArg(static_cast<const void*>(text)), FakeArg(reserved), FakeArg(size)});
    return CopyText(KeyFakes().name, text, size);
}

int32_t DbsGetKeyDataInfo(int32_t key, sKeyData* record)
{
    RecordCall("DbsGetKeyDataInfo", {FakeArg(key), FakeArg(record)});
    if (record != nullptr)
        *record = sKeyData{key, 0, 0, 0, 0, 0, 0, 0};
    return FakeResult("DbsGetKeyDataInfo", 1);
}

int32_t DbsSearchKey(int32_t key, int32_t what, int32_t scope, int32_t* array, int32_t size)
{
    RecordCall("DbsSearchKey", {FakeArg(key), FakeArg(what), FakeArg(scope), FakeArg(array), FakeArg(size)});
    const std::vector<int32_t>& found = KeyFakes().searchResult;
    const int32_t written = array == nullptr ? 0 : std::min(int32_t(found.size()), std::max(size, 0));
    std::copy_n(found.begin(), written, array);
    return FakeResult("DbsSearchKey", written);
}

int32_t OvkFileAction(int32_t action) FAKE_ANSWER(OvkFileAction, 1, FakeArg(action))

// The line names its key, and in `parent` and `level` the key and level of
// the previous line it was given, so that a test can see the chaining.
int32_t DbsGetHorViewLine(int32_t key, sKeyViewLine* line, const sKeyViewLine* previous)
{
    RecordCall("DbsGetHorViewLine", {FakeArg(key), FakeArg(line), FakeArg(previous)});
    line->key = key;
    line->parent = previous == nullptr ? -1 : previous->key;
    line->level = previous == nullptr ? -1 : previous->level + 1;
    return 1;
}

int32_t DbsGetDatabaseDepth(void) FAKE_ANSWER(DbsGetDatabaseDepth, KeyFakes().depth, )

int32_t OvkFindPosition(const BoardRecord* board, int32_t* key)
{
    RecordCall("OvkFindPosition", {FakeArg(board), FakeArg(key)});
    for (const auto& [handle, game] : Fakes().games) {
        if (&game.currentBoard != board)
            continue;
        const auto found = KeyFakes().keyAtPly.find(game.played);
        if (found == KeyFakes().keyAtPly.end())
            return 0;
        *key = found->second;
        return 1;
    }
    return 0;
}

int32_t OvgIndexCreate(uint32_t file, intptr_t codes, intptr_t reserved1, const char* directory,
                       intptr_t reserved2, intptr_t reserved3, intptr_t reserved4)
    FAKE_ANSWER(OvgIndexCreate, 19, FakeArg(file), FakeArg(codes), FakeArg(reserved1), FakeArg(directory),
                FakeArg(reserved2), FakeArg(reserved3), FakeArg(reserved4))

int32_t OvgIndexDelete(uint32_t file, int32_t code, intptr_t directory)
    FAKE_ANSWER(OvgIndexDelete, 0, FakeArg(file), FakeArg(code), FakeArg(reinterpret_cast<const char*>(directory)))

int32_t OvgIndexSort(uint32_t file, intptr_t firstGame, intptr_t skipDeleted, int32_t count, int32_t code,
                     int32_t direction, intptr_t numbers)
    FAKE_ANSWER(OvgIndexSort, count, FakeArg(file), FakeArg(firstGame), FakeArg(skipDeleted), FakeArg(count),
                FakeArg(code), FakeArg(direction), FakeArg(numbers))
