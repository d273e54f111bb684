#!/usr/bin/env python3
"""Makes the PDF documents that the demo converts: real documents of five kinds, the same ones every time.

    make_demo_pdfs.py FOLDER

Only Python's standard library is used. Each document is what a converter meets in practice:

    rapport.pdf                     text with outline, inner and outer links, and metadata
    scan.pdf                        pages that are pictures only: nothing to search for
    catalogue.pdf                   several hundred pages
    affiche.pdf                     a colour picture with text over it, on a landscape page
    Été à Kyïv 東京/Œuvre n° 1 – глава.pdf   a name with blanks, accents, dashes and other alphabets
"""
import random
import sys
import zlib
from pathlib import Path

A4 = (595, 842)  # points, as every length in a PDF
CATALOGUE_PAGES = 300
ODD_NAME = Path("Été à Kyïv 東京") / "Œuvre n° 1 – глава.pdf"


class Pdf:
    """A PDF file in the making: numbered objects, then the table that says where each begins."""

    def __init__(self):
        self.objects = []
        self.pages = []
        self.catalog = self.reserve()
        self.page_tree = self.reserve()
        self.font = self.add(
            "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>")
        self.catalog_entries = ""
        self.info = None

    def reserve(self):
        """A number for an object that others must name before it can be written."""
        self.objects.append(None)
        return len(self.objects)

    def put(self, number, body):
        self.objects[number - 1] = body if isinstance(body, bytes) else body.encode("ascii")

    def add(self, body):
        number = self.reserve()
        self.put(number, body)
        return number

    def add_stream(self, entries, data):
        packed = zlib.compress(data, 9)
        head = f"<< {entries} /Filter /FlateDecode /Length {len(packed)} >>\nstream\n"
        return self.add(head.encode("ascii") + packed + b"\nendstream")

    def add_page(self, content, size=A4, images=None, annotations=()):
        """Content in the page's drawing language; images by name; returns the page's number."""
        drawing = self.add_stream("", content)
        resources = f"/Font << /F {self.font} 0 R >>"
        if images:
            named = " ".join(f"/{name} {number} 0 R" for name, number in images.items())
            resources += f" /XObject << {named} >>"
        links = " ".join(f"{number} 0 R" for number in annotations)
        self.pages.append(self.add(
            f"<< /Type /Page /Parent {self.page_tree} 0 R /MediaBox [0 0 {size[0]} {size[1]}] "
            f"/Resources << {resources} >> /Contents {drawing} 0 R"
            + (f" /Annots [{links}]" if links else "") + " >>"))
        return self.pages[-1]

    def add_image(self, width, height, colours, bits, pixels):
        return self.add_stream(
            f"/Type /XObject /Subtype /Image /Width {width} /Height {height} "
            f"/ColorSpace /{colours} /BitsPerComponent {bits}", pixels)

    def set_metadata(self, title, author):
        self.info = self.add(b"<< /Title " + literal(title) + b" /Author " + literal(author) + b" >>")

    def set_outline(self, entries):
        """Entries: (title, page number of the object, entries below it)."""
        root = self.reserve()
        first, last, count = self._outline_level(root, entries)
        self.put(root, f"<< /Type /Outlines /First {first} 0 R /Last {last} 0 R /Count {count} >>")
        self.catalog_entries += f" /Outlines {root} 0 R /PageMode /UseOutlines"

    def _outline_level(self, parent, entries):
        numbers = [self.reserve() for _ in entries]
        total = len(entries)
        for i, (title, page, below) in enumerate(entries):
            item = b"<< /Title " + literal(title)
            item += f" /Parent {parent} 0 R /Dest [{page} 0 R /Fit]".encode()
            if i > 0:
                item += f" /Prev {numbers[i - 1]} 0 R".encode()
            if i + 1 < len(entries):
                item += f" /Next {numbers[i + 1]} 0 R".encode()
            if below:
                first, last, count = self._outline_level(numbers[i], below)
                item += f" /First {first} 0 R /Last {last} 0 R /Count {count}".encode()
                total += count
            self.put(numbers[i], item + b" >>")
        return numbers[0], numbers[-1], total

    def write(self, path):
        kids = " ".join(f"{page} 0 R" for page in self.pages)
        self.put(self.page_tree, f"<< /Type /Pages /Kids [{kids}] /Count {len(self.pages)} >>")
        self.put(self.catalog, f"<< /Type /Catalog /Pages {self.page_tree} 0 R{self.catalog_entries} >>")
        out = bytearray(b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n")
        places = []
        for number, body in enumerate(self.objects, 1):
            places.append(len(out))
            out += f"{number} 0 obj\n".encode() + body + b"\nendobj\n"
        table = len(out)
        out += f"xref\n0 {len(places) + 1}\n0000000000 65535 f \n".encode()
        out += b"".join(f"{place:010} 00000 n \n".encode() for place in places)
        info = f" /Info {self.info} 0 R" if self.info else ""
        out += f"trailer\n<< /Size {len(places) + 1} /Root {self.catalog} 0 R{info} >>\n".encode()
        out += f"startxref\n{table}\n%%EOF\n".encode()
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(out)


def literal(text):
    """Text outside the drawing: UTF-16 with its mark, in hexadecimal."""
    return b"<" + ("\ufeff" + text).encode("utf-16-be").hex().encode() + b">"


def show(x, y, size, text):
    """Drawing commands for one line of text, in the font's own encoding."""
    escaped = text.replace("\\", r"\\").replace("(", r"\(").replace(")", r"\)")
    return f"BT /F {size} Tf {x} {y} Td (".encode() + escaped.encode("cp1252") + b") Tj ET\n"


def text_page(title, lines):
    content = show(72, 760, 20, title)
    for row, line in enumerate(lines):
        content += show(72, 720 - 16 * row, 11, line)
    return content


def link(rectangle, target):
    left, bottom, right, top = rectangle
    return f"<< /Type /Annot /Subtype /Link /Rect [{left} {bottom} {right} {top}] /Border [0 0 0] {target} >>"


def make_report():
    """Text, an outline of two levels, a contents page with links into the document, a link out of it."""
    pdf = Pdf()
    chapters = ["Introduction", "Méthode", "Résultats", "Conclusion"]
    body = ["Été comme hiver, le relevé des hauteurs d'eau se poursuit.",
            "L'œuvre complète paraîtra après vérification (voir l'annexe).",
            "Les mesures sont données à 5 % près, en mètres."] * 8
    pages = [pdf.add_page(text_page(f"{n}. {title}", body)) for n, title in enumerate(chapters, 1)]
    contents = show(72, 760, 20, "Sommaire")
    links = []
    for row, (title, page) in enumerate(zip(chapters, pages)):
        y = 700 - 24 * row
        contents += show(72, y, 12, f"{row + 1}. {title}")
        links.append(pdf.add(link((72, y - 4, 300, y + 14), f"/Dest [{page} 0 R /Fit]")))
    contents += show(72, 560, 12, "https://example.org/releves")
    links.append(pdf.add(link((72, 556, 300, 574), "/A << /S /URI /URI (https://example.org/releves) >>")))
    front = pdf.add_page(contents, annotations=links)
    pdf.pages.insert(0, pdf.pages.pop())
    chapter_entries = [(title, page, []) for title, page in zip(chapters, pages)]
    pdf.set_outline([("Sommaire", front, []), ("Chapitres", pages[0], chapter_entries)])
    pdf.set_metadata("Rapport annuel", "Service des relevés")
    return pdf


def draw_scan(width, height, paper):
    """A page as a scanner sees it: lines of words, a frame and a disc, dark on the given paper."""
    dark = random.Random(2)
    for top in range(height // 10, height // 2, 40):
        left = width // 10
        while left < width * 8 // 10:
            word = dark.randrange(30, 120)
            for y in range(top, top + 14):
                paper[y * width + left:y * width + left + word] = bytes([dark.randrange(60)]) * word
            left += word + 18
    centre, radius = (width // 2, height * 3 // 4), height // 8
    for y in range(centre[1] - radius, centre[1] + radius):
        half = int((radius ** 2 - (y - centre[1]) ** 2) ** 0.5)
        paper[y * width + centre[0] - half:y * width + centre[0] + half] = bytes([90]) * (2 * half)
    return paper


def pack_bits(pixels, width):
    """Eight pixels a byte, each row beginning a new one; a pixel is white from 128 on."""
    rows = []
    for start in range(0, len(pixels), width):
        bits = "".join("1" if pixel >= 128 else "0" for pixel in pixels[start:start + width])
        rows.append(int(bits.ljust(-(-width // 8) * 8, "0"), 2).to_bytes(-(-width // 8), "big"))
    return b"".join(rows)


def make_scan():
    """Two grey pages with the grain of paper and one in black and white; no text on any."""
    pdf = Pdf()
    width, height = 1240, 1752  # A4 at 150 dots per inch
    full_page = f"q {A4[0]} 0 0 {A4[1]} 0 0 cm /I Do Q\n".encode()
    grain = bytes(232 + value % 24 for value in range(256))
    for seed in (3, 4):
        paper = bytearray(random.Random(seed).randbytes(width * height).translate(grain))
        image = pdf.add_image(width, height, "DeviceGray", 8, bytes(draw_scan(width, height, paper)))
        pdf.add_page(full_page, images={"I": image})
    paper = draw_scan(width, height, bytearray(b"\xff" * (width * height)))
    image = pdf.add_image(width, height, "DeviceGray", 1, pack_bits(paper, width))
    pdf.add_page(full_page, images={"I": image})
    return pdf


def make_catalogue():
    """Many short pages on small paper, an outline entry for every fiftieth."""
    pdf = Pdf()
    for number in range(1, CATALOGUE_PAGES + 1):
        content = show(30, 330, 14, f"Notice n° {number}")
        content += show(30, 300, 10, f"Page {number} du catalogue.")
        pdf.add_page(content, size=(280, 380))
    pdf.set_outline([(f"Notices {start + 1} et suivantes", pdf.pages[start], [])
                     for start in range(0, CATALOGUE_PAGES, 50)])
    return pdf


def make_poster():
    """A colour picture over the whole of a landscape page, with a caption."""
    pdf = Pdf()
    width, height = 420, 297
    pixels = bytearray()
    for y in range(height):
        for x in range(width):
            pixels += bytes((x * 255 // width, y * 255 // height, (x * y) % 256))
    image = pdf.add_image(width, height, "DeviceRGB", 8, bytes(pixels))
    content = b"q 842 0 0 595 0 0 cm /I Do Q\n1 1 1 rg\n" + show(60, 500, 36, "Fête de la lumière")
    pdf.add_page(content, size=(842, 595), images={"I": image})
    return pdf


def make_odd_name():
    pdf = Pdf()
    pdf.add_page(text_page("Œuvre n° 1", ["Une page suffit : c'est le nom qui compte."]))
    pdf.add_page(text_page("Suite", ["Deuxième page, pour compter."]))
    return pdf


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    make_report().write(folder / "rapport.pdf")
    make_scan().write(folder / "scan.pdf")
    make_catalogue().write(folder / "catalogue.pdf")
    make_poster().write(folder / "affiche.pdf")
    make_odd_name().write(folder / ODD_NAME)


if __name__ == "__main__":
    main()
