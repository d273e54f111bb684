# shellcheck shell=bash
# Which versions of the compilers and checkers this code is known to be clean with. In our own runs their findings are
# errors. A version that is not here has opinions that nobody has looked at: they are reported, and stop nobody.
# The formatter's are fewer: each release lays some lines out in its own way, and ours is that of Debian 12's.
declare -A known_versions=(
    [x86_64-w64-mingw32-g++-posix]='12 14'
    [clang++]='14 19'
    [clang-tidy]='14 19'
    [clang-format]='14'
    [cppcheck]='2.10 2.17'
    [shellcheck]='0.9'
)

# known TOOL: whether the version of it that is installed here is one of these.
known() {
    local number='[0-9]+' version
    if [[ ${known_versions[$1]} == *.* ]]; then number='[0-9]+\.[0-9]+'; fi
    version=$("$1" --version | grep -m 1 -oE "(version:?|\(GCC\)|Cppcheck) $number") || return 1
    [[ " ${known_versions[$1]} " == *" ${version##* } "* ]]
}

# warnings_of COMPILER: CMake's setting for it.
warnings_of() {
    if known "$1"; then
        echo -DCMAKE_COMPILE_WARNING_AS_ERROR=ON
    else
        echo "This version of $1 is not one that we know: its warnings are no errors." >&2
        echo -DCMAKE_COMPILE_WARNING_AS_ERROR=OFF
    fi
}
