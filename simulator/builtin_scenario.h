// The scenario that the simulated adapter starts with: simulator/scenarios/builtin.a8000.
#pragma once

#include "simulator/scenario.h"

extern const Scenario BuiltinScenario;
