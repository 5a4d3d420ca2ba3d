#pragma once

// Everything that the graphics engine declares for a display driver.

#include "platform/constants.h"
#include "platform/entry_points.h"
#include "platform/objects.h"
#include "platform/services.h"
#include "platform/structures.h"
#include "platform/types.h"
