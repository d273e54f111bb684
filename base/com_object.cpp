#include "base/com_object.h"

void* CreateRawComObject(const GUID& classId, const GUID& interfaceId) noexcept {
    void* object = nullptr;
    const HRESULT result = ::CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, &object);
    return SUCCEEDED(result) ? object : nullptr;
}
