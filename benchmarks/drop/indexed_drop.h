// Answers DragQueryFileW from an index, in the same time for every file. The system's may walk over all files
// before the one asked for (Wine's does), and what Talvenor itself takes for a drop would be lost beside
// that.
#pragma once

#include "tests/support/replaced_imports.h"

#include <windows.h>
#include <shellapi.h>
#include <shlobj.h>

#include <string_view>
#include <vector>

// For the life of this object, for all of the process. One at a time.
class IndexedDrop {
private:
    static UINT WINAPI Query(HDROP drop, UINT index, LPWSTR path, UINT size) {
        if (index == 0) MakeIndex(drop);
        if (index >= s_names.size()) return 0;
        const std::wstring_view name = s_names[index];
        if (name.size() >= size) return 0;
        name.copy(path, name.size());
        path[name.size()] = L'\0';
        return static_cast<UINT>(name.size());
    }

    static void MakeIndex(HDROP drop) {
        s_names.clear();
        const auto* const header = static_cast<const DROPFILES*>(::GlobalLock(drop));
        const auto* const bytes = reinterpret_cast<const BYTE*>(header);
        std::wstring_view name(reinterpret_cast<const wchar_t*>(bytes + header->pFiles));
        while (!name.empty()) {
            s_names.push_back(name);
            name = std::wstring_view(name.data() + name.size() + 1);
        }
        ::GlobalUnlock(drop);
    }

    static inline std::vector<std::wstring_view> s_names;
    ReplacedImport m_query{"DragQueryFileW", &Query};
};
