// The text that the converter and the command interpreter are started with. Rules only: no window, no shell.
#pragma once

#include "engine/conversion_options.h"

#include <string>
#include <string_view>

// The converter and its arguments for one PDF. Both paths are written as given, in double quotes; options the
// user left off or empty leave no trace. Any input has a result: what makes no sense is for the converter
// to refuse.
[[nodiscard]] std::wstring BuildConverterCommandLine(const ConversionOptions& options,
                                                     std::wstring_view djvuPath, std::wstring_view pdfPath);

// What "cmd.exe" gets to run `converterCommandLine`. With `hideOutput` the converter's error stream is
// appended to the log.
[[nodiscard]] std::wstring BuildInterpreterArguments(std::wstring_view converterCommandLine, bool hideOutput);
