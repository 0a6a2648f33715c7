// Names of the values that the driver reports as numbers.
#pragma once

#include <cstdint>

// Looks up the whole value, not single bits: a combination of categories is "Unknown".
const char* DebugCategoryName(uint32_t category);
const char* DebugLevelName(uint32_t level);
const char* PhyModeName(uint32_t mode);
