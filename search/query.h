// The host's query turned into a prepared query: texts folded, numbers and
// dates parsed, dropped conditions and empty groups squeezed out, so that the
// test of each game only compares.
#ifndef ORVAN_SEARCH_QUERY_H
#define ORVAN_SEARCH_QUERY_H

#include <cstdint>

#include "header/code_pages.h"
#include "orvan.h"

// AnsiToOemTable with the capitals A to Z mapped to their small letters: the
// query's side of every text comparison.
extern const CodePageTable QueryFoldTable;

// Fills `prepared` from `query` (which stays unchanged): only includeDeleted
// and conditions are set. Groups 0 to groupCount - 1 each hold at least one
// live condition from row 0 on; every other slot has field 0 and an empty
// value. conditionCount is the largest number of live conditions in a group.
// Text values are folded, number and result values and packed dates are
// stored as an int32_t in the first four bytes. Returns 1.
int32_t PrepareQuery(sQuery* prepared, const sQuery* query, int32_t* groupCount, int32_t* conditionCount);

// Reads a free-form date ("1997.05.12", "12 May 97", "5.1997") into its
// three parts, 0 for a part the text does not give. Month names come from the
// user's locale, long ones first. Returns 1.
int32_t ParseQueryDate(const char* text, int32_t* year, int32_t* month, int32_t* day);

// True when all 64 squares of `position` are 0.
bool BoardIsEmpty(const sPosition& position);

// The number value of a prepared condition.
int32_t ConditionNumber(const sQueryCondition& condition);

// True when a prepared condition on `field` holds a number (number, date and
// result fields) rather than a text.
bool FieldValueIsNumber(int32_t field);

#endif
