// The PDF back end of the report document. The document goes through the rich-text HTML
// flavour into a QTextDocument, which lays it out in pages of A4; each page is painted into
// a QPdfWriter (or the printer of the window program) with the report identity and
// "Page n of m" at its foot. The PDF is made in
// memory and written by the safe file writer, so a failed report never leaves half a file.
#include "render/report_pdf.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>
#include <QUrl>
#include <filesystem>

#include "core/helpers.h"
#include "files/safe_write.h"
#include "render/qpainter_surface.h"
#include "render/report_graph_image.h"
#include "reports/report_writers.h"

namespace velmar {
namespace {

// Layout units: 96 per inch, the pixel of the HTML flavour. Text stays vector text in the
// PDF; graphs are painted at three times that density.
constexpr int kResolution = 96;
constexpr double kGraphOversampling = 3.0;

// A graph of the report as PNG bytes, at the density of the PDF's graphs.
std::string ReportGraphPng(const ReportGraph& graph) {
  EnsureGuiApplication();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!RenderReportGraph(graph, kGraphOversampling).save(&buffer, "PNG")) return {};
  return std::string(bytes.constData(), static_cast<size_t>(bytes.size()));
}

}  // namespace

int PaintReportPages(const ReportDocument& doc, QPagedPaintDevice& device, std::string* error) {
  EnsureGuiApplication();
  QTextDocument text;
  text.documentLayout()->setPaintDevice(&device);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPointSizeF(8.0);
  // No ligatures: "Off" stays three letters for whoever searches or extracts the text.
  font.setStyleStrategy(QFont::PreferNoShaping);
  text.setDefaultFont(font);
  text.setDocumentMargin(0);
  int graph = 0;
  for (const ReportBlock& b : doc.blocks) {
    if (b.kind != ReportBlockKind::Graph) continue;
    text.addResource(QTextDocument::ImageResource,
                     QUrl(QString::fromStdString(ReportGraphResourceName(graph++))),
                     RenderReportGraph(b.graph, kGraphOversampling));
  }
  text.setHtml(QString::fromStdString(WriteReportHtml(doc, HtmlFlavour::RichText)));

  QPainter painter;
  if (!painter.begin(&device)) {
    if (error) *error = "the page device could not start";
    return 0;
  }
  // The layout works in the device's own pixels; its paint rectangle is the page less margins.
  const QRect paint = device.pageLayout().paintRectPixels(device.logicalDpiX());
  const double footer = 2.2 * QFontMetricsF(font, &device).height();
  const QSizeF pageSize(paint.width(), paint.height() - footer);
  text.setPageSize(pageSize);
  const int pages = text.pageCount();
  QFont footerFont = font;
  footerFont.setPointSizeF(7.0);
  for (int p = 0; p < pages; ++p) {
    if (p > 0) device.newPage();
    painter.save();
    painter.translate(0, -p * pageSize.height());
    text.drawContents(&painter, QRectF(0, p * pageSize.height(), pageSize.width(), pageSize.height()));
    painter.restore();
    painter.setFont(footerFont);
    painter.setPen(Qt::black);
    const QRectF foot(0, paint.height() - footer * 0.6, paint.width(), footer * 0.6);
    painter.drawLine(QPointF(0, foot.top()), QPointF(paint.width(), foot.top()));
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignBottom, QString::fromStdString(doc.identity));
    painter.drawText(foot, Qt::AlignRight | Qt::AlignBottom,
                     QStringLiteral("Page %1 of %2").arg(p + 1).arg(pages));
  }
  painter.end();
  return pages;
}

bool WriteReportPdf(const ReportDocument& doc, const std::string& path, std::string* error) {
  EnsureGuiApplication();
  QByteArray bytes;
  {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(15, 12, 15, 12), QPageLayout::Millimeter);
    writer.setResolution(kResolution);
    writer.setTitle(QString::fromStdString(doc.title));
    writer.setCreator(QStringLiteral("Velmar"));
    if (PaintReportPages(doc, writer, error) == 0) return false;
  }
  const SafeWriteResult written = WriteFileSafely(path, std::string_view(bytes.constData(), bytes.size()));
  if (!written.ok && error)
    *error = "the report could not be written to \"" + path + "\": " + written.message;
  return written.ok;
}

bool IsReportFileType(const std::string& extension) {
  for (const char* e : {"pdf", "html", "htm", "csv", "txt", "rtf"})
    if (EqualsNoCase(extension, e)) return true;
  return false;
}

bool WriteReportFile(const ReportDocument& doc, const std::string& path, std::string* error) {
  std::string ext = std::filesystem::path(path).extension().string();
  if (!ext.empty()) ext.erase(0, 1);
  if (!IsReportFileType(ext)) {
    if (error) *error = "the report type \"" + ext + "\" is unknown; use .pdf, .html, .csv, .rtf or .txt";
    return false;
  }
  if (EqualsNoCase(ext, "pdf")) return WriteReportPdf(doc, path, error);
  const std::string text = EqualsNoCase(ext, "csv")   ? WriteReportCsv(doc)
                           : EqualsNoCase(ext, "txt") ? WriteReportText(doc)
                           : EqualsNoCase(ext, "rtf") ? WriteReportRtf(doc, ReportGraphPng)
                                                      : WriteReportHtml(doc);
  const SafeWriteResult written = WriteFileSafely(path, text);
  if (!written.ok && error)
    *error = "the report could not be written to \"" + path + "\": " + written.message;
  return written.ok;
}

}  // namespace velmar
