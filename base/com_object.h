// Objects of the system's COM libraries. A thread that has initialised COM makes, uses and lets go of them.
#pragma once

#include "base/unique_resource.h"

#include <windows.h>
#include <objbase.h>

template <class Interface>
struct ComTraits {
    using Handle = Interface*;
    static constexpr Handle Empty() noexcept { return nullptr; }
    static void Close(Handle object) noexcept { object->Release(); }
};

template <class Interface>
using UniqueCom = UniqueResource<ComTraits<Interface>>;

// An object of class `classId`, of which it is interface `interfaceId`; null when it cannot be created.
[[nodiscard]] void* CreateRawComObject(const GUID& classId, const GUID& interfaceId) noexcept;

template <class Interface>
[[nodiscard]] UniqueCom<Interface> CreateComObject(const GUID& classId, const GUID& interfaceId) noexcept {
    return UniqueCom<Interface>(static_cast<Interface*>(CreateRawComObject(classId, interfaceId)));
}
