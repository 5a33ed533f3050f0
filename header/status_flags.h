// The four status flags shown in the header, in the order of their letters.
#ifndef ORVAN_HEADER_STATUS_FLAGS_H
#define ORVAN_HEADER_STATUS_FLAGS_H

#include <array>
#include <cstdint>

#include "orvan.h"
#include "siblings/game_driver.h"

struct StatusFlag {
    int32_t driverNumber;  // for IGGameGetStatus
    char letter;           // in HdrStatus text
    int32_t bit;           // in HdrStatus number
};

inline constexpr std::array<StatusFlag, 4> ShownStatusFlags = {{
    {OvgStatusAnnotated, 'A', OV_STATUS_ANNOTATED},
    {OvgStatusDeleted, 'D', OV_STATUS_DELETED},
    {OvgStatusSetUp, 'P', OV_STATUS_SETUP},
    {OvgStatusVariations, 'V', OV_STATUS_VARIATIONS},
}};

#endif
