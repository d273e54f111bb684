// The command line against a list of its parts, and the interpreter's arguments around it.
#include "tests/fuzz/fuzz_targets.h"

#include "engine/command_line.h"

namespace {

std::wstring Quoted(const std::wstring& text) {
    return L'"' + text + L'"';
}

}  // namespace

// Line 1: a letter for each check box that is checked. Then both paths, pages, resolution, extra options and
// folder.
void FuzzCommandLine(FuzzInput input) {
    const std::string_view checked = input.Line();
    const auto isChecked = [&](char letter) { return checked.find(letter) != std::string_view::npos; };
    const std::wstring djvuPath = input.Text();
    const std::wstring pdfPath = input.Text();
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
    options.pages = input.Text();
    options.resolution = input.Text();
    options.extraOptions = input.Text();
    options.outputFolder = input.Text();

    std::wstring pages = options.pages;
    std::erase(pages, L' ');
    std::wstring expected = L"pdf2djvu.exe -o " + Quoted(djvuPath) + L" -v ";
    const auto add = [&](bool isThere, const std::wstring& text) {
        if (isThere) expected += text;
    };
    add(isChecked('d') && !options.resolution.empty(), L"-d " + options.resolution);
    add(isChecked('m'), L" --no-metadata");
    add(isChecked('o'), L" --no-outline");
    add(isChecked('h'), L" --no-hyperlinks");
    add(isChecked('t'), L" --no-text");
    add(isChecked('l') && !isChecked('t'), L" --lines");
    add(isChecked('b'), L" --monochrome");
    add(!options.extraOptions.empty(), L" " + options.extraOptions);
    add(isChecked('p') && !options.pages.empty(), L" -p " + Quoted(pages));
    expected += L" " + Quoted(pdfPath);
    const std::wstring line = BuildConverterCommandLine(options, UnterminatedText(djvuPath).View(),
                                                        UnterminatedText(pdfPath).View());
    Require(line == expected, "another line");

    const bool hideOutput = isChecked('q');
    const std::wstring end = hideOutput ? L"\" 2>>TalvenorLog.txt" : L"\"";
    Require(BuildInterpreterArguments(UnterminatedText(line).View(), hideOutput) == L"/C \"" + line + end,
            "the interpreter gets another line");
}
