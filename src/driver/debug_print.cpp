#include "driver/debug_print.h"

#include <cstdarg>

#include "platform/services.h"

namespace koru {

namespace {

    // The engine takes its arguments as a list, which only a variadic function can make.
    void Print(const char* prefix, const char* format, ...)
    {
        va_list arguments;
        va_start(arguments, format);
        EngDebugPrint(const_cast<char*>(prefix), const_cast<char*>(format), arguments);
        va_end(arguments);
    }

} // namespace

void DebugPrint(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    EngDebugPrint(const_cast<char*>("KORU:"), const_cast<char*>(format), arguments);
    va_end(arguments);
}

void DebugPrintPiece(const char* text)
{
    Print("KORU: ", text);
}

void DebugPrintNumber(const char* text, ULONG number)
{
    char digits[11]; // of 32 bits, and the terminator; filled from the back
    char* first = digits + sizeof(digits) - 1;
    *first = '\0';
    do
        *--first = static_cast<char>('0' + number % 10);
    while ((number /= 10) != 0);
    DebugPrintPiece(text);
    Print("", first);
    Print("", "\n");
}

} // namespace koru
