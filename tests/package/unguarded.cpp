// What Talvenor must not be: a program that gets version.dll in the ordinary way, with its other imports, and
// loads the libraries named on its command line by their bare names. Shows that the planted ones would be
// found.
#include <windows.h>

int wmain(int argc, wchar_t** argv) {
    DWORD ignored = 0;
    ::GetFileVersionInfoSizeW(argv[0], &ignored);
    for (int i = 1; i < argc; ++i) ::LoadLibraryW(argv[i]);
    return 0;
}
