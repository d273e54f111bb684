// The values of the option controls. Read from the dialog each time a command
// line is built and thrown away with it: nothing is stored between two files.
#pragma once

#include <string>

struct ConversionOptions {
    bool pagesEnabled = false;
    std::wstring pages;  // as typed or pasted, blanks included
    bool resolutionEnabled = false;
    std::wstring resolution;  // dots per inch, as typed
    bool noMetadata = false;
    bool noOutline = false;
    bool noHyperlinks = false;
    bool noText = false;
    bool lines = false;
    bool monochrome = false;
    std::wstring extraOptions;  // handed on as typed
    bool outputFolderEnabled = false;
    std::wstring outputFolder;  // as typed: neither trimmed nor checked
};
