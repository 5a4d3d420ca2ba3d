// The C++ library asks for a file's size through a function that the run-time library of Windows 2000 may not
// have, and an import that is missing keeps a program from starting. Without an answer it reads on as usual.

#include <sys/stat.h>

extern "C" {
int NoFileSize(int, struct _stat64*) __asm__("__fstat64");
int NoFileSize(int, struct _stat64*)
{
    return -1;
}
int (*ImportedNoFileSize)(int, struct _stat64*) __asm__("__imp___fstat64") = NoFileSize;
}
