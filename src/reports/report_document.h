// The report document: the rows and cells with styles that the report sections build, in
// order, and that every back end (HTML, CSV, plain text here; PDF in the render library)
// writes. The sections never know which back end will read them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace velmar {

class DrawingSurface;

enum class ReportStyle : unsigned char {
  Title,         // section title: "Prediction results", "Hull data"
  Heading,       // a group of rows inside a section: "General", "Wind"
  Label,         // the label cell of a label and value row
  Value,         // the value cell of a label and value row
  GroupCaption,  // caption over a group of result columns: "SPEED COEFS"
  Symbol,        // column head of a result table: "FN"
  Unit,          // unit under a column head: "[kN]"
  Number,        // one result of one speed
  Legend,        // a symbol or mark and its meaning
  Frame,         // the heading and footer rows of a frame (date, project, report identity)
};

struct ReportCell {
  std::string text;
  ReportStyle style = ReportStyle::Value;
  int span = 1;  // columns the cell covers
};

struct ReportRow {
  std::vector<ReportCell> cells;
};

// A graph placed in a report: the SVG document for the back ends that inline it, and the
// drawing itself for those that paint (the PDF); either may be empty.
struct ReportGraph {
  std::string caption;
  std::string svg;
  double width = 0.0, height = 0.0;  // pixels at 96 per inch
  std::function<void(DrawingSurface&)> draw;
};

enum class ReportBlockKind : unsigned char { Title, Table, Graph, PageBreak };

// What a table holds; the CSV back end writes the data tables and leaves the frame out.
enum class ReportTableKind : unsigned char {
  Frame,       // heading and footer of a frame
  LabelValue,  // rows of label and value
  Results,     // symbol heads and one row a speed
  Check,       // "Parameters", "Value", "Range"
  Legend,      // symbols and marks with their meaning
};

struct ReportBlock {
  ReportBlockKind kind = ReportBlockKind::Title;
  ReportStyle style = ReportStyle::Title;  // of a title
  std::string text;                        // title text
  ReportTableKind tableKind = ReportTableKind::LabelValue;
  int headerRows = 0;  // leading rows of a table that form its head
  std::vector<ReportRow> rows;
  ReportGraph graph;

  int ColumnCount() const;  // the widest row, spans counted
};

// A report under construction: the frame's operations (clear, rows, cells, tables, graphs,
// page breaks) on a sequence of blocks.
class ReportDocument {
 public:
  std::string title;     // of the whole report ("Full resistance report")
  std::string identity;  // "Report ID" line of the footer, also the running page footer
  std::vector<ReportBlock> blocks;

  void Clear() { *this = ReportDocument(); }
  void AddTitle(std::string text, ReportStyle style = ReportStyle::Title);
  // Opens a table; the rows that follow go into it until another block is added.
  ReportBlock& AddTable(ReportTableKind kind, int headerRows = 0);
  // A row of the current table.
  ReportRow& AddRow(std::vector<ReportCell> cells = {});
  // A row of label and value.
  void AddLabelValue(std::string label, std::string value);
  void AddGraph(ReportGraph graph);
  void AddPageBreak();
};

}  // namespace velmar
