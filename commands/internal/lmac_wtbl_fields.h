// The decoded words of an LMAC wireless-table entry.
#pragma once

#include "commands/internal/wtbl_field.h"

extern const WtblWordGroups LmacWtblGroups;
