#include "base/string_table.h"

#include "base/resource_modules.h"

namespace {

constexpr UINT kStringsInBlock = 16;

// The block of `id` in the resources of `module`: sixteen texts, each after its length, without terminators.
// Null when the module has no such block.
const wchar_t* FindBlock(HINSTANCE module, UINT id) {
    const UINT block = id / kStringsInBlock + 1;
    const HRSRC found = ::FindResourceExW(module, RT_STRING, MAKEINTRESOURCEW(block),
                                          MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL));
    if (!found) return nullptr;
    const HGLOBAL loaded = ::LoadResource(module, found);
    return loaded ? static_cast<const wchar_t*>(::LockResource(loaded)) : nullptr;
}

}  // namespace

bool LoadStringResource(UINT id, std::wstring& text) {
    for (const HINSTANCE module : ResourceModules()) {
        const wchar_t* entry = FindBlock(module, id);
        if (!entry) continue;
        for (UINT skipped = 0; skipped < id % kStringsInBlock; ++skipped) entry += 1 + *entry;
        if (*entry == 0) return false;
        text.assign(entry + 1, *entry);
        return true;
    }
    return false;
}

std::wstring LoadText(UINT id) {
    std::wstring text;
    LoadStringResource(id, text);
    return text;
}
