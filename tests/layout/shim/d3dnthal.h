#pragma once

// Wanted by winddi.h; nothing of it is used.
