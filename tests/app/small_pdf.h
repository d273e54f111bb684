// Makes a real PDF document, small enough to be converted in a moment.
#pragma once
#include <cstdio>
#include <string>
#include <vector>

// `pages` pages of one inch, with some letters on each.
inline std::string SmallPdf(int pages) {
    const std::string content = "BT /F1 24 Tf 10 30 Td (PDF) Tj ET";
    std::vector<std::string> objects = {
        "<< /Type /Catalog /Pages 2 0 R >>",
        "",  // the page tree, which names the pages behind
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
        "<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content + "\nendstream",
    };
    std::string kids;
    for (int page = 0; page < pages; ++page) {
        objects.emplace_back(
            "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 72 72] /Contents 4 0 R "
            "/Resources << /Font << /F1 3 0 R >> >> >>");
        kids += std::to_string(objects.size()) + " 0 R ";
    }
    objects[1] = "<< /Type /Pages /Kids [ " + kids + "] /Count " + std::to_string(pages) + " >>";

    std::string pdf = "%PDF-1.4\n";
    std::string table = "0000000000 65535 f \n";  // the place of each object
    for (std::size_t i = 0; i < objects.size(); ++i) {
        char entry[24];
        std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", pdf.size());
        table += entry;
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string size = std::to_string(objects.size() + 1);
    const std::string start = std::to_string(pdf.size());
    return pdf + "xref\n0 " + size + "\n" + table + "trailer\n<< /Size " + size +
           " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}
