#pragma once

// The toolchain's kernel header. It defines two intrinsics that its other headers define as well; those are
// told that they are there already.
#define __INTRINSIC_DEFINED_InterlockedBitTestAndSet
#define __INTRINSIC_DEFINED_InterlockedBitTestAndReset
#include <ntddk.h>
