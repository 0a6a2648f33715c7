// The decoded words of a UMAC wireless-table entry.
#pragma once

#include "commands/internal/wtbl_field.h"

extern const WtblWordGroups UmacWtblGroups;
