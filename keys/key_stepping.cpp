// Stepping through the keys of the key database: the host and the key
// database agree on the arguments, which pass through unchanged.
#include "orvan.h"
#include "siblings/key_database.h"

int32_t OvGetFirstKey(int32_t parent, int32_t order) { return OvkGetFirstKey(parent, order); }

int32_t OvGetNextKey(int32_t key, int32_t order) { return OvkGetNextKey(key, order); }

int32_t OvGetPrevKey(int32_t key, int32_t order) { return OvkGetPreviousKey(key, order); }
