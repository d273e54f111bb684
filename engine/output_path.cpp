#include "engine/output_path.h"

#include "base/path_buffer.h"

#include <windows.h>
#include <shlwapi.h>

std::wstring BuildOutputPath(const ConversionOptions& options, const std::wstring& pdfPath) {
    PathBuffer djvu(pdfPath);
    // The three results are not looked at: a path too long for the shell is for the converter to refuse,
    // in its own words.
    if (!options.outputFolderEnabled) {
        ::PathRenameExtensionW(djvu.Data(), L".djvu");
        return djvu.Text();
    }
    ::PathStripPathW(djvu.Data());
    ::PathRenameExtensionW(djvu.Data(), L".djvu");
    PathBuffer joined(options.outputFolder);
    ::PathAppendW(joined.Data(), djvu.Data());
    return joined.Text();
}
