// Move-only owners of what the system hands out. A raw handle elsewhere in the code is borrowed.
#pragma once

#include <windows.h>

#include <utility>

template <class Traits>
class UniqueResource {
public:
    using Handle = typename Traits::Handle;

    UniqueResource() noexcept = default;
    explicit UniqueResource(Handle handle) noexcept : m_handle(handle) {}
    UniqueResource(UniqueResource&& other) noexcept
        : m_handle(std::exchange(other.m_handle, Traits::Empty())) {}
    UniqueResource& operator=(UniqueResource&& other) noexcept {
        if (this != &other) Reset(std::exchange(other.m_handle, Traits::Empty()));
        return *this;
    }
    ~UniqueResource() { Reset(); }

    [[nodiscard]] Handle Get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != Traits::Empty(); }

    void Reset(Handle handle = Traits::Empty()) noexcept {
        if (m_handle != Traits::Empty()) Traits::Close(m_handle);
        m_handle = handle;
    }

private:
    Handle m_handle = Traits::Empty();
};

// Mutexes, processes, threads: null when empty.
struct KernelTraits {
    using Handle = HANDLE;
    static constexpr Handle Empty() noexcept { return nullptr; }
    static void Close(Handle handle) noexcept { ::CloseHandle(handle); }
};

// CreateFileW: INVALID_HANDLE_VALUE when empty.
struct FileTraits {
    using Handle = HANDLE;
    static Handle Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(Handle handle) noexcept { ::CloseHandle(handle); }
};

struct IconTraits {
    using Handle = HICON;
    static constexpr Handle Empty() noexcept { return nullptr; }
    static void Close(Handle handle) noexcept { ::DestroyIcon(handle); }
};

using UniqueHandle = UniqueResource<KernelTraits>;
using UniqueFile = UniqueResource<FileTraits>;
using UniqueIcon = UniqueResource<IconTraits>;
