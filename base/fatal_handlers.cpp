// What happens when memory runs out or a text is handled wrongly: the program ends at once. It is built
// without exceptions, and a batch must not go on with half a path. These replace the library's own handlers,
// which throw and bring half of the exe's former size with them.

#include "base/fatal_error.h"

#include <cstdlib>
#include <new>
#include <string>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the library's.
namespace std {
void __throw_length_error(const char* /*text*/) {
    EndByFatalError();
}
void __throw_logic_error(const char* /*text*/) {
    EndByFatalError();
}
void __throw_out_of_range_fmt(const char* /*format*/, ...) {
    EndByFatalError();
}
void __throw_bad_alloc() {
    EndByFatalError();
}
void __throw_bad_array_new_length() {
    EndByFatalError();
}
}  // namespace std
// NOLINTEND(bugprone-reserved-identifier)

// Every member of the text class, compiled here: since version 13 the library takes one of them from its own
// archive, whose object file would bring the exceptions back (140 KB). Which one may change from version to
// version; the linker drops what nobody calls.
template class std::basic_string<wchar_t>;

void* operator new(std::size_t size) {
    if (void* const block = std::malloc(size ? size : 1)) return block;
    EndByFatalError();
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return std::malloc(size ? size : 1);
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}

// NOLINTBEGIN(misc-use-internal-linkage): they take the place of the library's.
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}
void operator delete[](void* block) noexcept {
    std::free(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}
// NOLINTEND(misc-use-internal-linkage)
