#pragma once

#include "platform/structures.h"

// The driver's only export.
extern "C" BOOL APIENTRY DrvEnableDriver(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded);
