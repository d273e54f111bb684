#include "ui/messages.h"

#include "base/string_table.h"
#include "res/resource.h"
#include "framework/app_module.h"
#include "ui/main_dlg.h"

#include <memory>
#include <new>
#include <string>

namespace {

// A string of the resources for a message box, whatever its length. A box is how the user hears of trouble,
// so that running out of memory here only loses the box.
class BoxText {
public:
    // `text` is a text, which is borrowed, or a string id.
    explicit BoxText(const wchar_t* text) noexcept : m_text(text) {
        if (text && IS_INTRESOURCE(text)) Load(static_cast<UINT>(reinterpret_cast<ULONG_PTR>(text)));
    }

    // Null when there is no text or no memory for it.
    [[nodiscard]] const wchar_t* Get() const noexcept { return m_text; }

private:
    void Load(UINT id) noexcept {
        m_text = nullptr;
        for (int size = 256;; size *= 2) {
            m_loaded.reset(new (std::nothrow) wchar_t[static_cast<std::size_t>(size)]);
            if (!m_loaded) return;
            m_loaded[0] = L'\0';  // what a missing string leaves
            if (::LoadStringW(CAppModule::Instance().ResourceInstance(), id, m_loaded.get(), size) <
                size - 1) {
                break;
            }
        }
        m_text = m_loaded.get();
    }

    std::unique_ptr<wchar_t[]> m_loaded;
    const wchar_t* m_text;
};

}  // namespace

int ShowMessage(HWND owner, const wchar_t* text, const wchar_t* caption, UINT type) {
    const BoxText boxText(text);
    const BoxText boxCaption(caption);
    const bool failed = (text && !boxText.Get()) || (caption && !boxCaption.Get());
    if (failed) return 0;
    return ::MessageBoxW(owner, boxText.Get(), boxCaption.Get(), type);
}

void CMainDlg::ShowLastError(UINT prefixId, const wchar_t* prefixText) {
    const DWORD error = ::GetLastError();  // first: loading a string may change it
    std::wstring message = L"Err : ";
    if (prefixText) {
        message = prefixText;
    } else if (prefixId != kNoPrefix) {
        LoadStringResource(prefixId, message);
    }
    wchar_t description[260] = {};
    // Deliberate: no flag keeps inserts from being looked for. An error whose text has some, such as 193, is
    // not formatted and leaves the description empty.
    if (!::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, LANG_USER_DEFAULT, description,
                          ARRAYSIZE(description), nullptr)) {
        description[0] = L'\0';
    }
    message += description;
    ShowMessage(m_hWnd, message.c_str(), MAKEINTRESOURCEW(IDS_PROGRAM_NAME), MB_OK | MB_ICONERROR);
}
