#include "tests/app/small_pdf.h"

#include <vector>

namespace {

// Objects are numbered from 1 on: the catalogue, the page tree, the font, then a page and its content by
// turns.
constexpr int kFirstPage = 4;

std::string Reference(int object) {
    return std::to_string(object) + " 0 R";
}

std::vector<std::string> Objects(int pages) {
    std::string kids;
    for (int page = 0; page < pages; ++page) kids += Reference(kFirstPage + 2 * page) + ' ';
    std::vector<std::string> objects = {
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [ " + kids + "] /Count " + std::to_string(pages) + " >>",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
    };
    for (int page = 0; page < pages; ++page) {
        const std::string content = "BT /F1 24 Tf 10 30 Td (" + std::to_string(page + 1) + ") Tj ET";
        objects.push_back("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 72 72] /Contents " +
                          Reference(kFirstPage + 2 * page + 1) +
                          " /Resources << /Font << /F1 3 0 R >> >> >>");
        objects.push_back("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content +
                          "\nendstream");
    }
    return objects;
}

// An entry of the cross-reference table: the place of an object, as ten digits.
std::string Entry(std::size_t place) {
    const std::string digits = std::to_string(place);
    return std::string(10 - digits.size(), '0') + digits + " 00000 n \n";
}

}  // namespace

std::string SmallPdf(int pages) {
    std::string pdf = "%PDF-1.4\n";
    std::string table = "0000000000 65535 f \n";
    int number = 0;
    for (const std::string& object : Objects(pages)) {
        table += Entry(pdf.size());
        pdf += std::to_string(++number) + " 0 obj\n" + object + "\nendobj\n";
    }
    const std::string size = std::to_string(number + 1);
    const std::string start = std::to_string(pdf.size());
    return pdf + "xref\n0 " + size + "\n" + table + "trailer\n<< /Size " + size +
           " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}
