// Objects of the system's COM libraries as tests have them. They are written as C sees them, each a table of
// functions, because the program calls a few of many: those that are not given are null, and a call of one
// ends the process. To be included before anything else of COM.
#pragma once

#define CINTERFACE

#include <windows.h>
#include <objbase.h>

#include <atomic>
#include <functional>
#include <type_traits>
#include <utility>

template <class Interface>
class ComObject : public Interface {
public:
    using Methods = std::remove_pointer_t<decltype(Interface::lpVtbl)>;

    // With one user, as it is created; `whenReleased` runs when it has none any more.
    ComObject(Methods& methods, std::function<void()> whenReleased)
        : m_whenReleased(std::move(whenReleased)) {
        methods.AddRef = [](Interface* self) -> ULONG { return ++static_cast<ComObject*>(self)->m_users; };
        methods.Release = [](Interface* self) -> ULONG {
            auto* const object = static_cast<ComObject*>(self);
            const ULONG left = --object->m_users;
            if (left == 0) {
                object->m_whenReleased();
                delete object;
            }
            return left;
        };
        this->lpVtbl = &methods;
    }

private:
    std::function<void()> m_whenReleased;
    std::atomic<ULONG> m_users{1};
};
