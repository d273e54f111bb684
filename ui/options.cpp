// What the controls say about the conversion, and the command line that comes of it.

#include "ui/main_dlg.h"

#include "engine/command_line.h"
#include "engine/output_path.h"

// What an unchecked box makes meaningless is not asked.
ConversionOptions CMainDlg::ReadOptions() const {
    ConversionOptions options;
    options.pagesEnabled = IsChecked(IDC_PAGES_CHECK);
    if (options.pagesEnabled) options.pages = Item(IDC_PAGES).Text();
    options.resolutionEnabled = IsChecked(IDC_RESOLUTION_CHECK);
    if (options.resolutionEnabled) options.resolution = Item(IDC_RESOLUTION).Text();
    options.noMetadata = IsChecked(IDC_NO_METADATA);
    options.noOutline = IsChecked(IDC_NO_OUTLINE);
    options.noHyperlinks = IsChecked(IDC_NO_HYPERLINKS);
    options.noText = IsChecked(IDC_NO_TEXT);
    options.lines = !options.noText && IsChecked(IDC_LINES);
    options.monochrome = IsChecked(IDC_MONOCHROME);
    options.extraOptions = Item(IDC_EXTRA_OPTIONS).Text();
    options.outputFolderEnabled = IsChecked(IDC_OUTPUT_FOLDER_CHECK);
    if (options.outputFolderEnabled) options.outputFolder = Item(IDC_OUTPUT_FOLDER).Text();
    return options;
}

std::wstring CMainDlg::BuildCommandLine(const std::wstring& pdfPath) const {
    const ConversionOptions options = ReadOptions();
    return BuildConverterCommandLine(options, BuildOutputPath(options, pdfPath), pdfPath);
}
