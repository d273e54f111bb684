#include "tests/window/setup_calls.h"

#include "tests/support/utf8.h"
#include "tests/window/forwarding_import.h"

#include <commctrl.h>
#include <shellapi.h>

#include <map>

namespace {

CallRecord* g_record = nullptr;
std::wstring g_folder;
std::map<HICON, std::string> g_loadedIcons;  // by LoadIconW

void Add(std::string call) {
    g_record->Add(std::move(call));
}

template <class... Numbers>
std::string Joined(const char* name, Numbers... numbers) {
    std::string text = name;
    ((text += ' ' + std::to_string(numbers)), ...);
    return text;
}

std::string ResourceName(LPCWSTR name) {
    return std::to_string(reinterpret_cast<ULONG_PTR>(name));
}

BOOL WINAPI FileExists(LPCWSTR path) {
    std::wstring shown = path;
    if (shown.starts_with(g_folder)) shown.replace(0, g_folder.size(), L"~");
    Add("PathFileExistsW " + Utf8(shown));
    return original<&FileExists>(path);
}

HANDLE WINAPI LoadImageOf(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) {
    Add("LoadImageW " + ResourceName(name) + ' ' + std::to_string(width) + 'x' + std::to_string(height));
    return SetUpCalls::iconsFail ? nullptr : original<&LoadImageOf>(module, name, type, width, height, flags);
}

HICON WINAPI LoadIconOf(HINSTANCE module, LPCWSTR name) {
    // The system's own icons, which the record does not name, are loaded without a module.
    Add((module ? "LoadIconW " : "LoadIconW of the system ") + ResourceName(name));
    if (SetUpCalls::iconsFail) return nullptr;
    const HICON icon = original<&LoadIconOf>(module, name);
    g_loadedIcons[icon] = ResourceName(name);
    return icon;
}

BOOL WINAPI DestroyIconOf(HICON icon) {
    const auto found = g_loadedIcons.find(icon);
    if (found != g_loadedIcons.end()) Add("DestroyIcon " + found->second);
    return original<&DestroyIconOf>(icon);
}

LONG_PTR WINAPI SetLong(HWND window, int index, LONG_PTR value) {
    if (index == GWLP_WNDPROC) Add("SetWindowLongPtrW " + WindowName(window) + " procedure");
    return original<&SetLong>(window, index, value);
}

HIMAGELIST WINAPI CreateImages(int width, int height, UINT flags, int count, int growth) {
    Add(Joined("ImageList_Create", width, height, flags, count, growth));
    return original<&CreateImages>(width, height, flags, count, growth);
}

int WINAPI AddImage(HIMAGELIST images, int index, HICON icon) {
    Add(Joined("ImageList_ReplaceIcon", index));
    return original<&AddImage>(images, index, icon);
}

void WINAPI AcceptFiles(HWND window, BOOL accept) {
    Add("DragAcceptFiles " + WindowName(window) + ' ' + std::to_string(accept));
    original<&AcceptFiles>(window, accept);
}

HWND WINAPI CreateWindowOf(DWORD exStyle, LPCWSTR className, LPCWSTR title, DWORD style, int x, int y,
                           int width, int height, HWND parent, HMENU menu, HINSTANCE module,
                           LPVOID parameter) {
    Add("CreateWindowExW " + Utf8(className));
    return original<&CreateWindowOf>(exStyle, className, title, style, x, y, width, height, parent, menu,
                                     module, parameter);
}

void WINAPI Quit(int code) {
    Add(Joined("PostQuitMessage", code));
    original<&Quit>(code);
}

}  // namespace

SetUpCalls::SetUpCalls(CallRecord& record, std::wstring folder, ControlCalls::Answer answer)
    : m_controlCalls(record, std::move(answer)) {
    g_record = &record;
    g_folder = std::move(folder);
    m_replaced.push_back(ReplaceAndForward<&FileExists>("PathFileExistsW"));
    m_replaced.push_back(ReplaceAndForward<&LoadImageOf>("LoadImageW"));
    m_replaced.push_back(ReplaceAndForward<&LoadIconOf>("LoadIconW"));
    m_replaced.push_back(ReplaceAndForward<&DestroyIconOf>("DestroyIcon"));
    m_replaced.push_back(ReplaceAndForward<&SetLong>("SetWindowLongPtrW"));
    m_replaced.push_back(ReplaceAndForward<&CreateImages>("ImageList_Create"));
    m_replaced.push_back(ReplaceAndForward<&AddImage>("ImageList_ReplaceIcon"));
    m_replaced.push_back(ReplaceAndForward<&AcceptFiles>("DragAcceptFiles"));
    m_replaced.push_back(ReplaceAndForward<&CreateWindowOf>("CreateWindowExW"));
    m_replaced.push_back(ReplaceAndForward<&Quit>("PostQuitMessage"));
}

SetUpCalls::~SetUpCalls() {
    m_replaced.clear();
    g_loadedIcons.clear();
    iconsFail = false;
}
