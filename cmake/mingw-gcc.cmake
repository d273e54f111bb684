# Cross build for 64-bit Windows with Debian's GCC. The -posix variant is named because the default one
# has no std::mutex, which GoogleTest needs; the program itself uses no thread library.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(TALVENOR_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${TALVENOR_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TALVENOR_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${TALVENOR_TRIPLET}-windres)
# The resource script is UTF-8; without this an accent becomes two characters.
set(CMAKE_RC_FLAGS_INIT "-c 65001")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_FIND_ROOT_PATH /usr/${TALVENOR_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
