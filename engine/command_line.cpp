#include "engine/command_line.h"

#include "log/log_file_name.h"

namespace {

void AppendQuoted(std::wstring& line, std::wstring_view text) {
    line += L'"';
    line += text;
    line += L'"';
}

std::wstring WithoutBlanks(std::wstring_view text) {
    std::wstring kept(text);
    std::erase(kept, L' ');
    return kept;
}

}  // namespace

std::wstring BuildConverterCommandLine(const ConversionOptions& options, std::wstring_view djvuPath,
                                       std::wstring_view pdfPath) {
    // The bare name is enough: the interpreter runs in the folder of the converter.
    std::wstring line = L"pdf2djvu.exe -o ";
    AppendQuoted(line, djvuPath);
    // Deliberate: this blank separates the resolution, and stays when there is none. The next option then
    // follows two blanks, which the converter does not mind.
    line += L" -v ";
    if (options.resolutionEnabled && !options.resolution.empty()) {
        line += L"-d ";
        line += options.resolution;
    }
    if (options.noMetadata) line += L" --no-metadata";
    if (options.noOutline) line += L" --no-outline";
    if (options.noHyperlinks) line += L" --no-hyperlinks";
    // The converter takes only one of the two; leaving the text out wins.
    if (options.noText) {
        line += L" --no-text";
    } else if (options.lines) {
        line += L" --lines";
    }
    if (options.monochrome) line += L" --monochrome";
    if (!options.extraOptions.empty()) {
        line += L' ';
        line += options.extraOptions;
    }
    // Deliberate: empty is what was typed, not what is left of it, so that blanks alone become -p "".
    if (options.pagesEnabled && !options.pages.empty()) {
        line += L" -p ";
        AppendQuoted(line, WithoutBlanks(options.pages));
    }
    line += L' ';
    AppendQuoted(line, pdfPath);
    return line;
}

std::wstring BuildInterpreterArguments(std::wstring_view converterCommandLine, bool hideOutput) {
    // The interpreter strips one pair of quotes around the whole line; those inside stay.
    std::wstring arguments = L"/C ";
    AppendQuoted(arguments, converterCommandLine);
    if (hideOutput) {
        arguments += L" 2>>";
        arguments += kLogFileName;
    }
    return arguments;
}
