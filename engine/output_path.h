// Where the DjVu file of a PDF goes. Uses the shell's path functions, so that "extension", "last component"
// and "joined" mean what they mean everywhere else on the system.
#pragma once

#include "engine/conversion_options.h"

#include <string>

// Path of the DjVu file for `pdfPath`: beside the PDF, or in the output folder when that option is on.
// A path that the shell functions refuse for its length (260 characters) stays as they left it.
[[nodiscard]] std::wstring BuildOutputPath(const ConversionOptions& options, const std::wstring& pdfPath);
