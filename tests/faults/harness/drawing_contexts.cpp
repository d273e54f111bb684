#include "tests/faults/harness/drawing_contexts.h"

#include <windows.h>

#include <array>

namespace {

// Wine keeps as many, and from there on takes one that is not in use.
constexpr std::size_t kStored = 64;

}  // namespace

void FillStoreOfDrawingContexts() {
    std::array<HDC, kStored> contexts = {};
    for (HDC& context : contexts) context = ::GetDC(nullptr);
    for (const HDC context : contexts) ::ReleaseDC(nullptr, context);
}
