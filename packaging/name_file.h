#pragma once

// A display driver's name in a text file. Its first line, without blanks and tabs at its ends and without a
// ".dll" behind it (in any case), is the name: 1 to 39 letters, digits, '_' and '-' of ASCII. A line ends with
// CR, LF, a zero byte or the file. Anything else (no file, an empty line, another character, a longer
// name) counts as no name.

#include "platform/types.h"

namespace koru {

constexpr ULONG MostNameCharacters = 39;

struct DriverName {
    WCHAR text[MostNameCharacters + 1]; // terminated
    ULONG length;
};

struct NameFile {
    const WCHAR* bare; // the file as systems that know a folder for such files find it
    const WCHAR* path; // the same file for those that do not
    const WCHAR* otherwise; // the name where the file has none; itself a valid one
};

DriverName ReadDriverName(const NameFile& file);

} // namespace koru
