// What the key database keeps about one key: its move, its position and its
// texts, the texts turned from the database's code page into the host's.
#include "chess/position.h"
#include "header/code_pages.h"
#include "orvan.h"
#include "siblings/key_database.h"

int32_t OvGetKeyMove(int32_t key, int32_t which) { return DbsGetKeyMove(key, 0, which); }

int32_t OvGetKeyPosition(int32_t key, sPosition* position)
{
    if (position == nullptr)
        return 0;
    BoardRecord board{};
    OvkGetKeyPosition(key, &board);
    return PositionFromBoard(position, &board, 0);
}

int32_t OvGetKeyInfo(int32_t key, sKeyInfo* info)
{
    if (info == nullptr)
        return 0;
    // Translated in place and bounded, so that a text the database left
    // unfilled (and perhaps unterminated) cannot run past its field.
    DbsGetKeycode(key, info->keycode);
    OemToAnsiCopy(info->keycode, info->keycode, OV_KEY_TEXT_SIZE);
    OvkGetKeyName(key, info->name, 0, OV_KEY_TEXT_SIZE);
    OemToAnsiCopy(info->name, info->name, OV_KEY_TEXT_SIZE);
    DbsGetRemark(key, info->remark);
    OemToAnsiCopy(info->remark, info->remark, OV_KEY_TEXT_SIZE);
    return DbsGetKeyDataInfo(key, &info->data);
}
