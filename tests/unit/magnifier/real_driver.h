#pragma once

// The next driver of the chain as far as the magnifier needs it: DrvCopyBits, which remembers how it
// was called and copies.

#include <vector>

#include "platform/platform.h"

namespace real_driver {

struct Copy {
    SURFOBJ* psoDest;
    SURFOBJ* psoSrc;
    RECTL rclDest;
    POINTL ptlSrc;
    bool hasClipOrXlate;
    LONG hookDepth; // of the driver under test at the call
    LONGLONG lastUpdateTime; // the same
};

// Loads it through the chain, with the current engine; without DrvCopyBits when told so.
void Load(bool offersCopyBits = true);
void Unload();

const std::vector<Copy>& Copies();
void ForgetCopies();
void AnswerCopiesWith(BOOL answer); // 1 at each Load

} // namespace real_driver
