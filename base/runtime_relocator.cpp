// In place of a part of the compiler's run-time library that this program does not need.

// Before the program begins, the library's own would write the addresses of other libraries' data into our
// code. Ours has none: the linker refuses them (--disable-runtime-pseudo-reloc).
extern "C" void _pei386_runtime_relocator() {}
