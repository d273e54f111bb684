// Stands in for the converter while pictures are taken: a PDF of n bytes takes n milliseconds, on every
// machine.
#include <windows.h>

#include <cstdio>

int wmain(int argc, wchar_t** argv) {
    WIN32_FILE_ATTRIBUTE_DATA pdf = {};
    if (argc < 2 || !::GetFileAttributesExW(argv[argc - 1], GetFileExInfoStandard, &pdf)) {
        std::fputs("paced converter: no PDF\n", stderr);
        return 1;
    }
    ::Sleep(pdf.nFileSizeLow);
    return 0;
}
