#include "log/ansi_text.h"

AnsiText::AnsiText(const std::wstring& text) {
    const int needed = ::WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    char* bytes = m_inPlace;
    int size = sizeof m_inPlace;
    if (needed > size) {
        m_grown.reset(new char[static_cast<std::size_t>(needed)]());
        bytes = m_grown.get();
        size = needed;
    }
    if (!::WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, bytes, size, nullptr, nullptr)) bytes[0] = '\0';
}
