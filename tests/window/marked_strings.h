// String tables in which each string is its own number, "<139>": a text from anywhere else shows.
#pragma once

#include "tests/support/replaced_imports.h"

#include <windows.h>

#include <map>
#include <string>

class MarkedStrings {
public:
    MarkedStrings() = default;
    MarkedStrings(const MarkedStrings&) = delete;
    MarkedStrings& operator=(const MarkedStrings&) = delete;

private:
    static std::wstring Mark(UINT id) { return L'<' + std::to_wstring(id) + L'>'; }

    // Sixteen texts, each after its length. By number, from 1.
    const wchar_t* Block(ULONG_PTR number) {
        constexpr UINT kInBlock = 16;
        std::wstring& texts = m_blocks[number];
        if (texts.empty()) {
            const auto first = static_cast<UINT>(number - 1) * kInBlock;
            for (UINT id = first; id < first + kInBlock; ++id) {
                texts.append(1, static_cast<wchar_t>(Mark(id).size())).append(Mark(id));
            }
        }
        return texts.data();
    }

    std::map<ULONG_PTR, std::wstring> m_blocks;
    Replaced m_find = REPLACE_IMPORT(FindResourceExW, [](HMODULE, LPCWSTR, LPCWSTR block, WORD) {
        return reinterpret_cast<HRSRC>(reinterpret_cast<ULONG_PTR>(block));
    });
    Replaced m_load =
        REPLACE_IMPORT(LoadResource, [](HMODULE, HRSRC block) { return reinterpret_cast<HGLOBAL>(block); });
    Replaced m_lock = REPLACE_IMPORT(LockResource, [this](HGLOBAL block) {
        return const_cast<wchar_t*>(Block(reinterpret_cast<ULONG_PTR>(block)));
    });
    Replaced m_loadString = REPLACE_IMPORT(LoadStringW, [](HINSTANCE, UINT id, LPWSTR text, int size) {
        ::lstrcpynW(text, Mark(id).c_str(), size);
        return ::lstrlenW(text);
    });
};
