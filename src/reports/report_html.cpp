// The HTML back end of the report document.
#include <sstream>

#include "reports/report_writers.h"
#include "reports/svg_surface.h"

namespace velmar {
namespace {

// The document's texts escaped as the SVG back end escapes them.
std::string Escape(std::string_view s) { return XmlEscape(s); }

// Element and class of a cell by its style.
struct CellTag {
  const char* element;
  const char* cls;
};
CellTag TagOf(ReportStyle s) {
  switch (s) {
    case ReportStyle::GroupCaption:
      return {"th", "group"};
    case ReportStyle::Symbol:
      return {"th", "symbol"};
    case ReportStyle::Unit:
      return {"th", "unit"};
    case ReportStyle::Number:
      return {"td", "number"};
    case ReportStyle::Label:
      return {"td", "label"};
    case ReportStyle::Heading:
      return {"td", "heading"};
    case ReportStyle::Legend:
      return {"td", "legend"};
    case ReportStyle::Frame:
      return {"td", "frame"};
    default:
      return {"td", "value"};
  }
}

const char* kStyleSheet =
    "body{font-family:Helvetica,Arial,sans-serif;font-size:9pt;margin:2em;}\n"
    "h1{font-size:14pt;}h2{font-size:12pt;margin:1.2em 0 0.4em 0;}\n"
    "table{border-collapse:collapse;margin:0.3em 0 0.8em 0;}\n"
    "td,th{padding:1px 6px;}\n"
    "th.group{text-align:center;border-bottom:1px solid #000;font-weight:bold;}\n"
    "th.symbol{text-align:right;font-weight:bold;}\n"
    "th.unit{text-align:right;font-weight:normal;border-bottom:1px solid #000;}\n"
    "td.number{text-align:right;white-space:nowrap;}\n"
    "td.label{padding-right:2em;}\n"
    "td.heading{font-weight:bold;padding-top:0.5em;}\n"
    "td.frame{color:#333;}\n"
    "figure{margin:0.5em 0;}\n"
    ".page{break-before:page;page-break-before:always;}\n";

// Cell attributes for the rich-text flavour, which reads attributes better than classes.
const char* RichAttributes(ReportStyle s) {
  switch (s) {
    case ReportStyle::GroupCaption:
      return " align=\"center\"";
    case ReportStyle::Symbol:
    case ReportStyle::Unit:
    case ReportStyle::Number:
      return " align=\"right\"";
    default:
      return "";
  }
}

}  // namespace

std::string ReportGraphResourceName(int index) { return "graph:" + std::to_string(index); }

std::string WriteReportHtml(const ReportDocument& doc, HtmlFlavour flavour) {
  const bool rich = flavour == HtmlFlavour::RichText;
  std::ostringstream out;
  out << "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">\n<title>" << Escape(doc.title)
      << "</title>\n";
  if (!rich) out << "<style>\n" << kStyleSheet << "</style>\n";
  out << "</head><body>\n";
  bool breakBefore = false;
  int graphIndex = 0;
  // The page break is written on the element that starts the new page.
  auto pageAttr = [&](bool cls) {
    if (!breakBefore) return std::string();
    breakBefore = false;
    return cls && !rich ? std::string(" class=\"page\"")
                        : std::string(" style=\"page-break-before: always\"");
  };
  for (const ReportBlock& b : doc.blocks) {
    switch (b.kind) {
      case ReportBlockKind::Title:
        out << (b.style == ReportStyle::Heading ? "<h3" : "<h2") << pageAttr(true) << ">" << Escape(b.text)
            << (b.style == ReportStyle::Heading ? "</h3>\n" : "</h2>\n");
        break;
      case ReportBlockKind::PageBreak:
        breakBefore = true;
        break;
      case ReportBlockKind::Graph: {
        out << "<div" << pageAttr(true) << ">";
        if (!b.graph.caption.empty()) out << "<h2>" << Escape(b.graph.caption) << "</h2>";
        if (rich)
          out << "<p><img src=\"" << ReportGraphResourceName(graphIndex) << "\" width=\"" << b.graph.width
              << "\" height=\"" << b.graph.height << "\"></p>";
        else
          out << "<figure>" << b.graph.svg << "</figure>";
        out << "</div>\n";
        ++graphIndex;
        break;
      }
      case ReportBlockKind::Table: {
        out << "<table" << pageAttr(false);
        if (rich) out << " cellspacing=\"0\" cellpadding=\"3\" style=\"margin-top:4px; margin-bottom:10px\"";
        out << ">\n";
        for (size_t r = 0; r < b.rows.size(); ++r) {
          if (!rich && r == 0 && b.headerRows > 0) out << "<thead>\n";
          out << "<tr>";
          for (const ReportCell& c : b.rows[r].cells) {
            const CellTag t = TagOf(c.style);
            out << "<" << t.element;
            if (rich) {
              out << RichAttributes(c.style);
              if (c.style == ReportStyle::Heading || c.style == ReportStyle::GroupCaption ||
                  c.style == ReportStyle::Symbol)
                out << " style=\"font-weight:bold\"";
            } else {
              out << " class=\"" << t.cls << "\"";
            }
            if (c.span > 1) out << " colspan=\"" << c.span << "\"";
            out << ">" << Escape(c.text) << "</" << t.element << ">";
          }
          out << "</tr>\n";
          if (!rich && b.headerRows > 0 && static_cast<int>(r) + 1 == b.headerRows) out << "</thead>\n";
        }
        out << "</table>\n";
        break;
      }
    }
  }
  out << "</body></html>\n";
  return out.str();
}

}  // namespace velmar
