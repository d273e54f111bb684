// Replacing an imported function by one that looks on and calls what it replaced.
#pragma once

#include "tests/support/replaced_imports.h"

#include <memory>
#include <type_traits>

// What the import held before kReplacement took its place.
template <auto* kReplacement>
inline decltype(kReplacement) original = nullptr;

// Puts kReplacement in the place of the import `name`. It calls original<kReplacement>.
template <auto* kReplacement>
[[nodiscard]] std::unique_ptr<ReplacedImport> ReplaceAndForward(const char* name) {
    auto replaced = std::make_unique<ReplacedImport>(name, kReplacement);
    original<kReplacement> = replaced->template Original<std::remove_pointer_t<decltype(kReplacement)>>();
    return replaced;
}
