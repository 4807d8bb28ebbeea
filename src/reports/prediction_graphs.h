// modGraphs: the speed table as charts. The 48 axis fields, the presets of each mode (one
// table, one row per preset), the graph modes, graphs of several project files and the
// special graphs, all built into a clsVXCoordinateGraph that any back end draws.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/model_set.h"
#include "reports/coordinate_graph.h"
#include "reports/report_document.h"

namespace velmar {

class clsVXUnits;

// --- axis fields ----------------------------------------------------------------------------

inline constexpr int kGraphFieldCount = 48;
// The result column of axis field 0 to 47 ("Speed" ... "ThrustDeductionAlignmentMultiplier").
const char* GraphFieldColumn(int field);
// The field of a column name or symbol (any case); -1 when it is not an axis field.
int GraphFieldFromName(std::string_view name);
// An axis caption: the column's description and its unit, "Vessel speed [kn]".
std::string ColumnCaption(int column, const clsVXUnits& units);

// Fills `values` with the column for every row of the set's table, in the units of `units`
// (a compare file's numbers are converted to those of the open project). Returns 0 when the
// table has no rows.
int GetGraphFieldData(const ModelSet& set, int column, const clsVXUnits& units, std::vector<double>& values);

// --- presets --------------------------------------------------------------------------------

enum class GraphPresetKind {
  Custom,                 // the fields chosen in the custom graph options
  Pair,                   // y columns against an x column
  ConfidenceHull,         // "[Confidence: RBARE]"
  ConfidenceInteraction,  // "[Confidence: PBTOTAL]", "[Confidence: EFFO]"
  Ittc78Coefs,            // "[ITTC-78 coefs]"
  EngineLoad,             // "[Engine load]"
  Towpull,                // "[Towpull]"
  PropellerCoefs,         // "[Propeller coefs]"
  PitchMap,               // "[Pitch map]": the "PSN influence" lines of several pitch ratios
  Waterjet,               // "[Waterjet]"
};

// What the y axis does after the automatic scaling.
enum class YAxisRule { Auto, FromZero, Efficiency };

// The three lists of presets: resistance mode, propulsion with a propeller, with a waterjet.
enum class PresetList { Resistance = 0, Propeller = 1, Waterjet = 2 };

struct GraphPreset {
  const char* name;  // "SPEED:RBARE", "[Engine load]"
  GraphPresetKind kind;
  const char* x;               // column of the x axis
  std::vector<const char*> y;  // columns of the y axis
  double yScale;               // the y columns are shown times this ("10*KQ")
  YAxisRule yRule;
  int index[3];  // place in each list (-1: not in it)
};

// Every preset, each once.
const std::vector<GraphPreset>& GraphPresets();
// The presets of a list in their order (index 0 is "Custom").
std::vector<const GraphPreset*> PresetsOf(PresetList list);
// The list that the set's propulsor and the mode call for.
PresetList PresetListFor(const ModelSet& set, Mode mode);
// A preset by name (any case, brackets optional for a special graph); nullptr if none.
const GraphPreset* FindPreset(std::string_view name);

// --- modes and options ----------------------------------------------------------------------

// "Graph: Standard", "Graph: Single", "Graph: Multiple", "Graph: Custom".
enum class GraphMode { Standard = 0, Single = 1, Multiple = 2, Custom = 3 };
const char* GraphModeCaption(GraphMode mode);

// One graph of the custom set: the preset index in the mode's list, and the fields of a
// custom pair (used when the preset is 0, "Custom").
struct CustomGraph {
  int preset = 1;
  int xField = 0;
  int yField = 4;
};

// The custom graph options, one record for the whole program.
struct CustomGraphOptions {
  std::vector<CustomGraph> graphs{CustomGraph{}};
  LineStyle lineStyle = LineStyle::SplineMarkers;
  bool legendOn = true;
  int legendPosition = kLegendTopLeft;
  // "File 1:" to "File 4:", beside the "Active job:".
  static constexpr int kCompareFileCount = 4;
  std::vector<std::string> compareFiles;
};
// "Spline & Markers" ...; "Off", "On"; "Top right" ...
std::vector<std::string> LineStyleLabels();
std::vector<std::string> LegendOnLabels();
std::vector<std::string> LegendPositionLabels();
// "Active job:", "File 1:" ... "File 4:".
std::string CompareFileCaption(int index);
// Whether a graph of the set needs a calculation of the other mode: the preset reads
// columns that only a propulsion run writes.
bool PresetNeedsPropulsion(const GraphPreset& preset);

// --- building -------------------------------------------------------------------------------

// A project whose table is drawn: the open one first, then the compare files.
struct GraphSource {
  const ModelSet* set = nullptr;
  std::string label;  // its file name
};

struct GraphRequest {
  const GraphPreset* preset = nullptr;  // nullptr or "Custom": the fields below
  int xColumn = 0;                      // columns of clsVXSpeedPerformance
  std::vector<int> yColumns;
  Mode mode = Mode::Resistance;
  LineStyle lineStyle = LineStyle::SplineMarkers;
  bool legendOn = true;
  int legendPosition = kLegendTopLeft;
  bool customOpen = false;  // a custom graph leaves the axes as scaled
};

struct GraphBuild {
  clsVXCoordinateGraph graph;
  // Warning boxes the build raised, each a title and a message.
  std::vector<std::pair<std::string, std::string>> warnings;
  bool drawn = false;  // false: the chart is left empty (no engine, a fault)
};

// Builds the chart of the request over the sources (sources[0] is the open project, whose
// units the axes show).
GraphBuild BuildPredictionGraph(const GraphRequest& request, const std::vector<GraphSource>& sources);

// The charts of a mode window in a graph mode: "Standard" the mode's first default graph,
// "Single" the selected preset of the mode's list, "Multiple" every graph of the custom set,
// "Custom" the custom set with the axes left as scaled. Options give line style and legend.
std::vector<GraphRequest> GraphRequestsFor(GraphMode graphMode, const CustomGraphOptions& options,
                                           PresetList list, int selectedPreset, Mode mode);
// The two graphs each mode starts with, as NewProject sets them: resistance "SPEED:RTOTAL"
// and "SPEED:PETOTAL", propulsion "SPEED:PBPROP" and "SPEED:EFFO".
std::vector<CustomGraph> DefaultGraphs(Mode mode);

// A built chart as a report block: its SVG for the back ends that inline it and a drawing
// function for those that paint.
ReportGraph MakeReportGraph(const clsVXCoordinateGraph& graph, std::string caption, double width = 720,
                            double height = 480);

// "Save graph as...": the dialog's title, its file types, and the default name, which is the
// project's file name without "vxvl".
inline constexpr const char* kSaveGraphDialogTitle = "Save file...";
std::vector<std::string> SaveGraphFileTypes();  // "JPEG (*.jpg)", "Bitmap (*.bmp)"
std::string DefaultGraphImageName(std::string_view projectFileName);

// "Best practice" and "Ideal efficiency" at a thrust loading KT/J^2 (see the source).
double IdealEfficiency(double thrustLoading);
double BestPracticeEfficiency(double thrustLoading, int bladeCount, double expAreaRatio);

}  // namespace velmar
