// The key database contract: the calls liborvan makes into libovkey.so.
// One database is open per process, so most calls name none. Key texts are in
// code page 437 and fit 256 bytes. A key is a signed 32-bit number, 0 = none.
#ifndef ORVAN_SIBLINGS_KEY_DATABASE_H
#define ORVAN_SIBLINGS_KEY_DATABASE_H

#include <cstdint>

#include "orvan.h"
#include "siblings/driver_records.h"

#define OVKEY_API __attribute__((visibility("default")))

extern "C" {

// Stores the version word through `version` (and 0 through `second` when not
// null). Result 0 is a failure.
OVKEY_API int32_t OvkGetVersion(uint32_t* version, uint32_t* second);

}  // extern "C"

#endif
