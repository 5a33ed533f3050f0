// Preparation of a header query: each condition's value read once by the
// form of its field, and the live conditions packed to the front.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "search/query.h"

const CodePageTable QueryFoldTable = [] {
    CodePageTable table = AnsiToOemTable;
    for (int letter = 'A'; letter <= 'Z'; ++letter)
        table[letter] = static_cast<uint8_t>(letter - 'A' + 'a');
    return table;
}();

namespace {

enum class FieldForm { Text, Number, Date, Result };

FieldForm FormOf(int32_t field)
{
    switch (field) {
    case QfElo:
    case QfMoves:
    case QfRound:
    case QfLoadnumber:
    case QfWhiteElo:
    case QfBlackElo:
        return FieldForm::Number;
    case QfDate:
        return FieldForm::Date;
    case QfResult:
        return FieldForm::Result;
    default:
        return FieldForm::Text;
    }
}

void ClearSlot(sQueryCondition& slot)
{
    slot.field = 0;
    slot.op = 0;
    slot.value[0] = '\0';
}

void StoreNumber(sQueryCondition& slot, int32_t number)
{
    std::memcpy(slot.value, &number, sizeof number);
}

// The driver's result code of a result text: "1-0" 1, "1/2..." 2, "0-1" 3,
// anything else 0.
int32_t ResultCodeOf(const char* text)
{
    if (text[0] == '0')
        return 3;
    if (text[0] == '1')
        return text[1] == '/' ? 2 : 1;
    return 0;
}

int32_t PackedDateOf(const char* text)
{
    int32_t year = 0;
    int32_t month = 0;
    int32_t day = 0;
    ParseQueryDate(text, &year, &month, &day);
    return static_cast<int32_t>((static_cast<uint32_t>(year) & 0xFFFF) << 16 | (static_cast<uint32_t>(month) & 0xFF) << 8 |
                                (static_cast<uint32_t>(day) & 0xFF));
}

// The value text through QueryFoldTable, never past the 64 bytes of the slot.
void StoreFoldedText(sQueryCondition& slot, const char* text)
{
    int index = 0;
    for (; index < OV_QUERY_VALUE_SIZE - 1 && text[index] != '\0'; ++index)
        slot.value[index] = static_cast<char>(QueryFoldTable[static_cast<uint8_t>(text[index])]);
    slot.value[index] = '\0';
}

// Fills `target` from `source`; true when the condition is live.
bool PrepareCondition(sQueryCondition& target, const sQueryCondition& source)
{
    target.field = source.field;
    target.op = source.op;
    if (source.op < QopEquals || source.op > QopNotContains)
        target.field = 0;
    // A host's value must be terminated within its bytes; a value that is not
    // is read up to its last byte.
    char text[OV_QUERY_VALUE_SIZE + 1];
    std::memcpy(text, source.value, OV_QUERY_VALUE_SIZE);
    text[OV_QUERY_VALUE_SIZE] = '\0';

    switch (FormOf(target.field)) {
    case FieldForm::Number: {
        const auto number = static_cast<int32_t>(std::clamp<long>(std::strtol(text, nullptr, 10), INT32_MIN, INT32_MAX));
        StoreNumber(target, number);
        return !(number == 0 && target.op == QopBeginsWith);
    }
    case FieldForm::Date: {
        const int32_t packed = PackedDateOf(text);
        StoreNumber(target, packed);
        return !(packed == 0 && target.op == QopBeginsWith);
    }
    case FieldForm::Result:
        StoreNumber(target, ResultCodeOf(text));
        return true;
    case FieldForm::Text:
        StoreFoldedText(target, text);
        return target.field != 0 && (target.value[0] != '\0' || target.op == QopEquals || target.op == QopNotEquals);
    }
    return false;
}

}  // namespace

int32_t ConditionNumber(const sQueryCondition& condition)
{
    int32_t number;
    std::memcpy(&number, condition.value, sizeof number);
    return number;
}

bool FieldValueIsNumber(int32_t field)
{
    return FormOf(field) != FieldForm::Text;
}

int32_t PrepareQuery(sQuery* prepared, const sQuery* query, int32_t* groupCount, int32_t* conditionCount)
{
    prepared->includeDeleted = query->includeDeleted;
    *groupCount = 0;
    *conditionCount = 0;
    if (query->kind == QueryPosition) {
        for (auto& row : prepared->conditions)
            for (sQueryCondition& slot : row)
                ClearSlot(slot);
        return 1;
    }

    int outGroup = 0;
    for (int group = 0; group < OV_QUERY_GROUPS; ++group) {
        int kept = 0;
        for (int row = 0; row < OV_QUERY_ROWS; ++row)
            if (PrepareCondition(prepared->conditions[kept][outGroup], query->conditions[row][group]))
                ++kept;
        for (int row = kept; row < OV_QUERY_ROWS; ++row)
            ClearSlot(prepared->conditions[row][outGroup]);
        if (kept != 0)
            ++outGroup;
        if (kept > *conditionCount)
            *conditionCount = kept;
    }
    *groupCount = outGroup;
    for (int group = outGroup; group < OV_QUERY_GROUPS; ++group)
        for (auto& row : prepared->conditions)
            ClearSlot(row[group]);
    return 1;
}
