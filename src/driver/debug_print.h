#pragma once

#include "platform/types.h"

namespace koru {

// "KORU:" and the formatted message, as one print. Only constant texts as format.
void DebugPrint(const char* format, ...);

// "KORU: " (with a blank) and the text as it stands.
void DebugPrintPiece(const char* text);

// DebugPrintPiece, then the number in unsigned decimal and a line end.
void DebugPrintNumber(const char* text, ULONG number);

} // namespace koru
