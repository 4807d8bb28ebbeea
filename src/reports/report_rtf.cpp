// The Rich Text Format back end of the report document: A4 pages with the margins of the PDF,
// titles, tables with their head rows repeated on every page, graphs as PNG pictures, and the
// report identity with "Page n of m" at the foot of every page.
#include <algorithm>
#include <cstdint>
#include <sstream>

#include "files/text_codec.h"
#include "reports/report_writers.h"

namespace velmar {
namespace {

// Twentieths of a point: A4 less margins of 15 mm at the sides, 12 mm at the top and bottom.
constexpr int kPageWidth = 11906, kPageHeight = 16838, kMarginSide = 850, kMarginTopBottom = 680;
constexpr int kTextWidth = kPageWidth - 2 * kMarginSide;
constexpr int kTwipsPerPixel = 15;  // 1440 a inch over the report's 96 pixels an inch

// Text as RTF: the control characters \ { } escaped, ASCII as it stands, everything else as
// \uN? with N the signed 16-bit unit (two units, a surrogate pair, beyond the first plane).
std::string Escape(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (const char32_t cp : Utf8ToCodePoints(s)) {
    if (cp == '\\' || cp == '{' || cp == '}') {
      out += '\\';
      out += static_cast<char>(cp);
    } else if (cp == '\t') {
      out += "\\tab ";
    } else if (cp == '\n') {
      out += "\\line ";
    } else if (cp >= 0x20 && cp < 0x80) {
      out += static_cast<char>(cp);
    } else if (cp >= 0x80) {
      auto unit = [&](char32_t u) { out += "\\u" + std::to_string(static_cast<int16_t>(u)) + "?"; };
      if (cp > 0xFFFF) {
        unit(0xD800 + ((cp - 0x10000) >> 10));
        unit(0xDC00 + ((cp - 0x10000) & 0x3FF));
      } else {
        unit(cp);
      }
    }
  }
  return out;
}

// Paragraph format of a cell: alignment, weight and size (half points) by its style.
std::string CellFormat(ReportStyle s) {
  switch (s) {
    case ReportStyle::GroupCaption:
      return "\\qc\\b\\fs15 ";
    case ReportStyle::Symbol:
    case ReportStyle::Unit:
      return "\\qr\\b\\fs15 ";
    case ReportStyle::Number:
      return "\\qr\\fs15 ";
    case ReportStyle::Heading:
      return "\\ql\\b\\fs17 ";
    case ReportStyle::Label:
    case ReportStyle::Frame:
      return "\\ql\\fs15 ";
    default:
      return "\\ql\\fs16 ";
  }
}

void WriteTable(std::ostringstream& out, const ReportBlock& b) {
  const int columns = std::max(1, b.ColumnCount());
  // Label and value rows give the label a third of the line; other tables share it evenly.
  auto edge = [&](int column) {
    if (b.tableKind == ReportTableKind::LabelValue && columns == 2) return column == 1 ? kTextWidth / 3 : kTextWidth;
    return kTextWidth * column / columns;
  };
  for (size_t r = 0; r < b.rows.size(); ++r) {
    const ReportRow& row = b.rows[r];
    // Head rows repeat on every page and keep with the row below them.
    const bool head = static_cast<int>(r) < b.headerRows;
    out << "\\trowd\\trgaph57\\trleft0" << (head ? "\\trhdr" : "");
    int column = 0;
    for (const ReportCell& c : row.cells) {
      column = std::min(columns, column + std::max(1, c.span));
      out << "\\cellx" << edge(column);
    }
    out << "\n";
    for (const ReportCell& c : row.cells)
      out << "\\pard\\intbl" << (head ? "\\keepn" : "") << CellFormat(c.style) << Escape(c.text) << "\\b0\\cell\n";
    out << "\\row\n";
  }
  out << "\\pard\\sa120\\par\n";
}

void WriteGraph(std::ostringstream& out, const ReportGraph& g, const ReportPictureFn& picture) {
  out << "\\pard\\keepn\\qc\\b\\fs17 " << Escape(g.caption) << "\\b0\\par\n";
  const std::string png = picture ? picture(g) : std::string();
  if (!png.empty()) {
    // The picture at its size in the report (pixels at 96 an inch), whatever its density.
    out << "\\pard\\qc{\\pict\\pngblip\\picwgoal" << static_cast<int>(g.width * kTwipsPerPixel) << "\\pichgoal"
        << static_cast<int>(g.height * kTwipsPerPixel) << "\n";
    static constexpr char kHex[] = "0123456789abcdef";
    for (size_t i = 0; i < png.size(); ++i) {
      const auto v = static_cast<unsigned char>(png[i]);
      out << kHex[v >> 4] << kHex[v & 15];
      if (i % 64 == 63) out << "\n";
    }
    out << "}\\par\n";
  }
  out << "\\pard\\sa120\\par\n";
}

}  // namespace

std::string WriteReportRtf(const ReportDocument& doc, const ReportPictureFn& picture) {
  std::ostringstream out;
  out << "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\n"
      << "{\\fonttbl{\\f0\\fswiss\\fcharset0 DejaVu Sans;}}\n"
      << "{\\info{\\title " << Escape(doc.title) << "}}\n"
      << "\\paperw" << kPageWidth << "\\paperh" << kPageHeight << "\\margl" << kMarginSide << "\\margr"
      << kMarginSide << "\\margt" << kMarginTopBottom << "\\margb" << kMarginTopBottom << "\n"
      << "{\\footer\\pard\\plain\\f0\\fs14\\brdrt\\brdrs\\brdrw5\\tqr\\tx" << kTextWidth << " "
      << Escape(doc.identity)
      << "\\tab Page {\\field{\\*\\fldinst PAGE}{\\fldrslt 1}} of {\\field{\\*\\fldinst NUMPAGES}{\\fldrslt 1}}"
         "\\par}\n"
      << "\\pard\\plain\\f0\\fs16\n";
  for (const ReportBlock& b : doc.blocks) {
    switch (b.kind) {
      case ReportBlockKind::Title:
        out << "\\pard\\keepn\\sb120\\sa60\\b" << (b.style == ReportStyle::Heading ? "\\fs18 " : "\\fs22 ")
            << Escape(b.text) << "\\b0\\fs16\\par\n";
        break;
      case ReportBlockKind::Table:
        WriteTable(out, b);
        break;
      case ReportBlockKind::Graph:
        WriteGraph(out, b.graph, picture);
        break;
      case ReportBlockKind::PageBreak:
        if (&b != &doc.blocks.back()) out << "\\pard\\page\n";
        break;
    }
  }
  out << "}\n";
  return out.str();
}

}  // namespace velmar
