// The back ends on a small hand-made document: what each must keep (escaping, quoting,
// spans, page breaks, the frame left out of CSV, inline graphs, aligned columns).
#include "reports/report_writers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace velmar {
namespace {

ReportDocument Sample() {
  ReportDocument doc;
  doc.title = "Sample";
  doc.AddTable(ReportTableKind::Frame);
  doc.AddRow({{"Project ID", ReportStyle::Frame}, {"P-1", ReportStyle::Frame}});
  doc.AddTitle("Prediction results");
  doc.AddTable(ReportTableKind::Results, 2);
  doc.AddRow({{"SPEED COEFS", ReportStyle::GroupCaption, 2}});
  doc.AddRow({{"SPEED", ReportStyle::Symbol}, {"FN", ReportStyle::Symbol}});
  doc.AddRow({{"+ 12.00 +", ReportStyle::Number}, {"0.150", ReportStyle::Number}});
  doc.AddRow({{"8.00", ReportStyle::Number}, {"0.100", ReportStyle::Number}});
  doc.AddPageBreak();
  doc.AddTitle("Hull data");
  doc.AddLabelValue("Description:", "Tug <A & B>, \"big\" {\\x} \u00e9\u2013\U0001F6A2");
  doc.AddGraph({"Predicted resistance", "<svg id=\"g\"></svg>", 200, 100, nullptr});
  return doc;
}

TEST(ReportHtml, IsOnePageOfEscapedTextWithInlineGraphsAndPageBreaks) {
  const std::string html = WriteReportHtml(Sample());
  EXPECT_NE(html.find("Tug &lt;A &amp; B&gt;, &quot;big&quot;"), std::string::npos);
  EXPECT_NE(html.find("<th class=\"group\" colspan=\"2\">SPEED COEFS</th>"), std::string::npos);
  EXPECT_NE(html.find("<h2 class=\"page\">Hull data</h2>"), std::string::npos);
  EXPECT_NE(html.find("<svg id=\"g\"></svg>"), std::string::npos);
  EXPECT_EQ(html.find("<img"), std::string::npos);
  // The rich-text flavour names the graph as a resource and breaks the page by style.
  const std::string rich = WriteReportHtml(Sample(), HtmlFlavour::RichText);
  EXPECT_NE(rich.find("<img src=\"" + ReportGraphResourceName(0) + "\""), std::string::npos);
  EXPECT_NE(rich.find("<h2 style=\"page-break-before: always\">Hull data</h2>"), std::string::npos);
  EXPECT_EQ(rich.find("<svg"), std::string::npos);
}

TEST(ReportCsv, WritesTheSectionTablesQuotedAndLeavesTheFrameOut) {
  EXPECT_EQ(WriteReportCsv(Sample()),
            "Prediction results\r\n"
            "SPEED COEFS,\r\n"
            "SPEED,FN\r\n"
            "+ 12.00 +,0.150\r\n"
            "8.00,0.100\r\n"
            "\r\n"
            "Hull data\r\n"
            "Description:,\"Tug <A & B>, \"\"big\"\" {\\x} \u00e9\u2013\U0001F6A2\"\r\n"
            "\r\n");
}

TEST(ReportText, AlignsNumbersRightAndMarksPageBreaks) {
  const std::string text = WriteReportText(Sample());
  EXPECT_NE(text.find("Prediction results\n==================\n"), std::string::npos);
  EXPECT_NE(text.find("--SPEED COEFS---\n"
                      "    SPEED     FN\n"
                      "+ 12.00 +  0.150\n"
                      "     8.00  0.100\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find(std::string(72, '=') + "\n"), std::string::npos);
  EXPECT_NE(text.find("Description:  Tug <A & B>, \"big\" {\\x} \u00e9\u2013\U0001F6A2\n"), std::string::npos);
}

TEST(ReportRtf, EscapesTextRepeatsHeadRowsAndPlacesPictures) {
  const std::string rtf = WriteReportRtf(Sample(), [](const ReportGraph&) { return std::string("\x89PNG"); });
  EXPECT_EQ(rtf.rfind("{\\rtf1\\ansi", 0), 0u);
  // Control characters escaped, other characters as signed UTF-16 units (a surrogate pair
  // beyond the first plane).
  EXPECT_NE(rtf.find("Tug <A & B>, \"big\" \\{\\\\x\\} \\u233?\\u8211?\\u-10179?\\u-8542?"), std::string::npos) << rtf;
  EXPECT_EQ(std::count(rtf.begin(), rtf.end(), '{') - std::count(rtf.begin(), rtf.end(), '}'), 0);
  size_t rows = 0, heads = 0;
  for (size_t p = 0; (p = rtf.find("\\trowd", p)) != std::string::npos; ++p) ++rows;
  for (size_t p = 0; (p = rtf.find("\\trhdr", p)) != std::string::npos; ++p) ++heads;
  EXPECT_EQ(rows, 6u);
  EXPECT_EQ(heads, 2u);
  EXPECT_NE(rtf.find("\\cellx10206\n"), std::string::npos);  // the group caption spans the line
  EXPECT_NE(rtf.find("\\page\n"), std::string::npos);
  EXPECT_NE(rtf.find("{\\pict\\pngblip\\picwgoal3000\\pichgoal1500\n89504e47}"), std::string::npos);
  EXPECT_EQ(WriteReportRtf(Sample()).find("\\pict"), std::string::npos);
}

}  // namespace
}  // namespace velmar
