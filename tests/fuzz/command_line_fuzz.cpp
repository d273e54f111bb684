// The command line, read back option by option.
#include "tests/fuzz/fuzz_targets.h"

#include "engine/command_line.h"
#include "tests/fuzz/fuzz_input.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

namespace {

// What a command line says.
struct ReadLine {
    std::wstring djvuPath;
    std::wstring pdfPath;
    std::optional<std::wstring> resolution;
    bool noMetadata = false;
    bool noOutline = false;
    bool noHyperlinks = false;
    bool noText = false;
    bool lines = false;
    bool monochrome = false;
    std::wstring extraOptions;
    std::optional<std::wstring> pages;

    bool operator==(const ReadLine&) const = default;
};

ReadLine Read(std::wstring_view line) {
    ReadLine read;
    TextReader reader(line);
    Require(reader.Take(L"pdf2djvu.exe -o \""), "the line does not begin with the converter and -o");
    read.djvuPath = reader.TakeUntil(L"\"");
    Require(reader.Take(L" -v "), "no -v behind the output path");
    if (reader.Take(L"-d ")) {
        const std::wstring_view rest = reader.Rest();
        read.resolution = rest.substr(0, rest.find(L' '));
        reader.Take(*read.resolution);
    }
    read.noMetadata = reader.Take(L" --no-metadata");
    read.noOutline = reader.Take(L" --no-outline");
    read.noHyperlinks = reader.Take(L" --no-hyperlinks");
    read.noText = reader.Take(L" --no-text");
    read.lines = reader.Take(L" --lines");
    read.monochrome = reader.Take(L" --monochrome");

    // From the end: the PDF in quotes, before it perhaps the pages in quotes, before them anything.
    std::wstring_view rest = reader.Rest();
    Require(rest.ends_with(L'"'), "the line does not end in a quote");
    rest.remove_suffix(1);
    const std::size_t pdf = rest.rfind(L" \"");
    Require(pdf != std::wstring_view::npos, "no quote before the PDF");
    read.pdfPath = rest.substr(pdf + 2);
    rest = rest.substr(0, pdf);
    if (rest.ends_with(L'"')) {
        rest.remove_suffix(1);
        const std::size_t pages = rest.rfind(L" -p \"");
        Require(pages != std::wstring_view::npos, "no -p before the pages");
        read.pages = rest.substr(pages + 5);
        rest = rest.substr(0, pages);
    }
    if (!rest.empty()) {
        Require(rest[0] == L' ', "no blank before the extra options");
        read.extraOptions = rest.substr(1);
    }
    return read;
}

// The line for paths without terminators.
std::wstring Built(const ConversionOptions& options, const std::wstring& djvuPath,
                   const std::wstring& pdfPath) {
    return BuildConverterCommandLine(options, UnterminatedText(djvuPath).View(),
                                     UnterminatedText(pdfPath).View());
}

std::wstring Without(std::wstring text, std::wstring_view characters) {
    std::erase_if(text, [&](wchar_t c) { return characters.find(c) != std::wstring_view::npos; });
    return text;
}

ReadLine Said(const ConversionOptions& options, const std::wstring& djvuPath, const std::wstring& pdfPath) {
    ReadLine said;
    said.djvuPath = djvuPath;
    said.pdfPath = pdfPath;
    if (options.resolutionEnabled && !options.resolution.empty()) said.resolution = options.resolution;
    said.noMetadata = options.noMetadata;
    said.noOutline = options.noOutline;
    said.noHyperlinks = options.noHyperlinks;
    said.noText = options.noText;
    said.lines = options.lines && !options.noText;
    said.monochrome = options.monochrome;
    said.extraOptions = options.extraOptions;
    if (options.pagesEnabled && !options.pages.empty()) said.pages = Without(options.pages, L" ");
    return said;
}

// Texts that cannot be taken for something else in the line.
ConversionOptions Unambiguous(ConversionOptions options) {
    std::erase_if(options.resolution, [](wchar_t c) { return c < L'0' || c > L'9'; });
    options.pages = Without(options.pages, L"\"");
    options.extraOptions = Without(options.extraOptions, L"\"-");
    return options;
}

}  // namespace

// Line 1: a letter for each check box that is checked. Then both paths, pages, resolution, extra options and
// folder.
void FuzzCommandLine(std::string_view input) {
    FuzzInput values(input);
    const std::string_view checked = values.Line();
    const auto isChecked = [&](char letter) { return checked.find(letter) != std::string_view::npos; };
    const std::wstring djvuPath = values.Text();
    const std::wstring pdfPath = values.Text();
    ConversionOptions options;
    options.pagesEnabled = isChecked('p');
    options.resolutionEnabled = isChecked('d');
    options.noMetadata = isChecked('m');
    options.noOutline = isChecked('o');
    options.noHyperlinks = isChecked('h');
    options.noText = isChecked('t');
    options.lines = isChecked('l');
    options.monochrome = isChecked('b');
    options.outputFolderEnabled = isChecked('f');
    options.pages = values.Text();
    options.resolution = values.Text();
    options.extraOptions = values.Text();
    options.outputFolder = values.Text();

    const std::wstring line = Built(options, djvuPath, pdfPath);
    Require(line.ends_with(L" \"" + pdfPath + L"\""), "the line does not end with the PDF");

    const ConversionOptions clear = Unambiguous(options);
    const std::wstring clearDjvu = Without(djvuPath, L"\"");
    const std::wstring clearPdf = Without(pdfPath, L"\"");
    Require(Read(Built(clear, clearDjvu, clearPdf)) == Said(clear, clearDjvu, clearPdf),
            "the line says something else than the options");

    const bool hideOutput = isChecked('q');
    const std::wstring arguments = BuildInterpreterArguments(UnterminatedText(line).View(), hideOutput);
    std::wstring_view inner = arguments;
    Require(inner.starts_with(L"/C \""), "the interpreter's arguments do not begin with /C");
    inner.remove_prefix(4);
    const std::wstring_view end = hideOutput ? L"\" 2>>TalvenorLog.txt" : L"\"";
    Require(inner.ends_with(end), "the interpreter's arguments do not end as they should");
    inner.remove_suffix(end.size());
    Require(inner == line, "the interpreter gets another line");
}
