// A dialog template of the extended kind, taken apart.
#pragma once
#include <windows.h>

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

struct TemplatePlace {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const TemplatePlace&, const TemplatePlace&) = default;
};

struct TemplateControl {
    int id = 0;
    std::wstring kind;  // the class's name; predefined classes by their names too
    std::wstring text;  // "#n" for a resource by number
    TemplatePlace place;
    DWORD style = 0;
    DWORD extendedStyle = 0;
    DWORD helpId = 0;
    WORD extraBytes = 0;

    friend bool operator==(const TemplateControl&, const TemplateControl&) = default;
};

struct DialogTemplate {
    std::wstring title;
    std::wstring menu;
    std::wstring windowClass;
    TemplatePlace place;
    DWORD style = 0;
    DWORD extendedStyle = 0;
    WORD fontPoints = 0;
    std::wstring font;
    std::vector<TemplateControl> controls;  // in template order, which is the tab order
};

// Throws driver::Failure when the bytes are no extended template.
DialogTemplate ReadDialogTemplate(std::string_view bytes);

// For the output of a failed comparison.
std::ostream& operator<<(std::ostream& out, const TemplateControl& control);
