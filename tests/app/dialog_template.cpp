#include "tests/app/dialog_template.h"

#include <array>
#include <ostream>

#include "tests/app/program_resources.h"
#include "tests/equipment/failure.h"
#include "tests/equipment/text.h"

namespace {

// A text, or 0xFFFF and a number.
std::wstring TakeTextOrNumber(ByteReader& reader) {
    const auto first = reader.Take<wchar_t>();
    if (first == 0) return std::wstring();
    if (first == 0xFFFF) return L'#' + std::to_wstring(reader.Take<WORD>());
    return first + reader.TakeTerminatedText();
}

constexpr std::array kClasses = {L"Button",    L"Edit",     L"Static",       L"ListBox",
                                 L"ScrollBar", L"ComboBox", L"SysListView32"};

// Class names are told apart without regard to case, and the first six also go by numbers.
std::wstring TakeClass(ByteReader& reader) {
    constexpr int kFirstNumber = 0x80;
    const std::wstring name = TakeTextOrNumber(reader);
    if (!name.empty() && name[0] == L'#')
        return kClasses.at(static_cast<std::size_t>(std::stoi(name.substr(1)) - kFirstNumber));
    for (const wchar_t* const known : kClasses) {
        if (::CompareStringOrdinal(name.c_str(), -1, known, -1, TRUE) == CSTR_EQUAL) return known;
    }
    return name;
}

TemplatePlace TakePlace(ByteReader& reader) {
    TemplatePlace place;
    place.left = reader.Take<short>();
    place.top = reader.Take<short>();
    place.width = reader.Take<short>();
    place.height = reader.Take<short>();
    return place;
}

TemplateControl TakeControl(ByteReader& reader) {
    TemplateControl control;
    reader.AlignTo4();
    control.helpId = reader.Take<DWORD>();
    control.extendedStyle = reader.Take<DWORD>();
    control.style = reader.Take<DWORD>();
    control.place = TakePlace(reader);
    control.id = reader.Take<int>();
    control.kind = TakeClass(reader);
    control.text = TakeTextOrNumber(reader);
    control.extraBytes = reader.Take<WORD>();
    reader.Skip(control.extraBytes);
    return control;
}

}  // namespace

DialogTemplate ReadDialogTemplate(std::string_view bytes) {
    ByteReader reader(bytes);
    const auto version = reader.Take<WORD>();
    const auto signature = reader.Take<WORD>();
    if (version != 1 || signature != 0xFFFF) throw driver::Failure("not an extended dialog template");
    DialogTemplate dialog;
    reader.Take<DWORD>();  // help id
    dialog.extendedStyle = reader.Take<DWORD>();
    dialog.style = reader.Take<DWORD>();
    const auto controls = reader.Take<WORD>();
    dialog.place = TakePlace(reader);
    dialog.menu = TakeTextOrNumber(reader);
    dialog.windowClass = TakeTextOrNumber(reader);
    dialog.title = TakeTextOrNumber(reader);
    if (dialog.style & DS_SETFONT) {
        dialog.fontPoints = reader.Take<WORD>();
        reader.Skip(sizeof(WORD) + 2 * sizeof(BYTE));  // weight, italic, character set
        dialog.font = reader.TakeTerminatedText();
    }
    for (WORD i = 0; i < controls; ++i) dialog.controls.push_back(TakeControl(reader));
    return dialog;
}

std::ostream& operator<<(std::ostream& out, const TemplateControl& control) {
    const TemplatePlace& place = control.place;
    return out << control.id << ' ' << driver::ToUtf8(control.kind) << " \"" << driver::ToUtf8(control.text)
               << "\" at " << place.left << ',' << place.top << ' ' << place.width << 'x' << place.height
               << std::hex << " style 0x" << control.style << " extended 0x" << control.extendedStyle
               << std::dec << " help " << control.helpId << " extra " << control.extraBytes;
}
