// Prediction graphs: axis fields, the preset table, and the building of every kind of chart.
#include "reports/prediction_graphs.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "core/format.h"
#include "core/helpers.h"
#include "core/project.h"
#include "core/speed_performance.h"
#include "core/units.h"
#include "propulsion/bseries.h"
#include "propulsion/engine.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_driver.h"
#include "propulsion/propulsion_settings.h"
#include "propulsion/waterjet.h"
#include "resistance/ittc78.h"
#include "resistance/resistance_driver.h"
#include "resistance/resistance_settings.h"
#include "validation/method_expert.h"
#include "vessel/appendage.h"
#include "vessel/environment.h"
#include "vessel/hull.h"

namespace velmar {
namespace {

constexpr const char* kGraphFields[kGraphFieldCount] = {"Speed",
                                                        "CoefFroudeLength",
                                                        "CoefFroudeVolume",
                                                        "CoefFroudeChineBeam",
                                                        "PowerEffectiveTotal",
                                                        "WakeFraction",
                                                        "ThrustDeduction",
                                                        "RelRotEfficiency",
                                                        "EngineRPM",
                                                        "PowerBrakePerProp",
                                                        "FuelRatePerEngine",
                                                        "PercentEngineLoadFactor",
                                                        "PropulsorEfficiency",
                                                        "OverallPropulsiveEfficiency",
                                                        "PropulsorThrust",
                                                        "TotalDeliveredThrust",
                                                        "TotalNetTowpull",
                                                        "PropulsorRPM",
                                                        "PropulsorTorque",
                                                        "PowerDeliveredPerProp",
                                                        "PowerShaftPerProp",
                                                        "PowerShaftTotal",
                                                        "PowerBrakeTotal",
                                                        "TransportFactor",
                                                        "CPMeanPitch",
                                                        "SigmaV",
                                                        "SigmaN",
                                                        "Sigma07R",
                                                        "MinPitchFaceCav",
                                                        "TipSpeed",
                                                        "RecommendedEAR",
                                                        "MeanBladePressure",
                                                        "PercentCavAverage",
                                                        "PercentCavPeak",
                                                        "CoefPropulsorJ",
                                                        "CoefPropulsorKT",
                                                        "CoefPropulsorKQ",
                                                        "CoefPropulsorKTN",
                                                        "CoefPropulsorKTJ2",
                                                        "CoefPropulsorKQJ3",
                                                        "CoefPropulsorCTH",
                                                        "CoefPropulsorCP",
                                                        "CoefPropulsorReynolds",
                                                        "AccelGravities",
                                                        "AccelTimeSecs",
                                                        "AccelDistance",
                                                        "WakeFractionAlignmentMultiplier",
                                                        "ThrustDeductionAlignmentMultiplier"};

// The line of a compare file is dashed; the open project's is solid.
constexpr DashStyle kSourceDash[] = {DashStyle::Solid, DashStyle::Dash, DashStyle::Dot, DashStyle::DashDot,
                                     DashStyle::Dash};
const Argb kNeutral = ColourFromHex("333333");

// The plot margins of a prediction graph: left, right, top, bottom in viewport units.
constexpr double kMargins[4] = {1250, 500, 375, 1000};

int Column(const char* name) { return clsVXSpeedPerformance::ColumnIndex(name); }

const char* SymbolOf(int column) {
  const FieldDesc& d = clsVXSpeedPerformance::Column(column);
  return *d.symbol ? d.symbol : d.name;
}

// The y-axis rule of an axis field: efficiencies 0 to 2, loads, thrusts, RPM, torque and
// powers from 0, the rest as scaled.
YAxisRule FieldRule(int column) {
  for (int f = 0; f < kGraphFieldCount; ++f) {
    if (Column(kGraphFields[f]) != column) continue;
    if (f == 12 || f == 13) return YAxisRule::Efficiency;
    if (f == 11 || (f >= 14 && f <= 21)) return YAxisRule::FromZero;
  }
  return YAxisRule::Auto;
}

void ApplyYRule(clsVXCoordinateGraph& g, YAxisRule rule) {
  GraphAxis& y = g.YAxis();
  if (rule == YAxisRule::Efficiency) {
    g.FixAxis(y, 0.0, 2.0);
  } else if (rule == YAxisRule::FromZero && y.min != 0.0 && y.max > 0.0) {
    g.FixAxis(y, 0.0, y.max, y.major);
  }
  g.XAxis().cross = g.XAxis().min;
  y.cross = y.min;
}

GraphSeries LineSeries(std::string legend, Argb colour, LineStyle style, DashStyle dash = DashStyle::Solid) {
  GraphSeries s;
  s.legend = std::move(legend);
  s.pen = Pen{colour, 1.6, dash};
  s.lineStyle = style;
  return s;
}

std::string WithUnit(std::string caption, const std::string& unit) {
  return unit.empty() ? caption : caption + " [" + unit + "]";
}

const clsVXUnits& UnitsOf(const std::vector<GraphSource>& sources) { return *sources.front().set->Units; }

std::vector<double> Scaled(std::vector<double> v, double k) {
  for (double& x : v) x *= k;
  return v;
}

// The pair graph: each y column of each source against the x column.
void BuildPairs(GraphBuild& b, LineStyle style, int xColumn, const std::vector<int>& yColumns, double yScale,
                const std::vector<GraphSource>& sources) {
  const clsVXUnits& units = UnitsOf(sources);
  for (size_t si = 0; si < sources.size(); ++si) {
    std::vector<double> x;
    if (GetGraphFieldData(*sources[si].set, xColumn, units, x) == 0) continue;
    for (size_t yi = 0; yi < yColumns.size(); ++yi) {
      std::vector<double> y;
      GetGraphFieldData(*sources[si].set, yColumns[yi], units, y);
      std::string legend = (yScale != 1.0 ? TickLabel(yScale) + "*" : "") + SymbolOf(yColumns[yi]);
      if (sources.size() > 1) legend += " - " + sources[si].label;
      GraphSeries s = LineSeries(legend, clsVXCoordinateGraph::DefaultSeriesColour(static_cast<int>(yi)),
                                 style, kSourceDash[std::min<size_t>(si, 4)]);
      s.marker = static_cast<MarkerShape>(si % 5);
      s.x = x;
      s.y = Scaled(std::move(y), yScale);
      b.graph.AddDataSeries(std::move(s));
    }
  }
}

// Runs the hull drag of method `m` on copies of the set's objects; the bare-hull drag of
// every row, or nothing when the method fails.
bool HullDragOfMethod(const ModelSet& set, int method, std::vector<double>& drag, const clsVXUnits& units) {
  auto hull = set.Hull->CopyClass();
  auto appendage = set.Appendage->CopyClass();
  auto environment = set.Environment->CopyClass();
  auto ittc78 = set.ITTC78->CopyClass();
  auto resistance = set.Resistance->CopyClass();
  auto sp = set.SpeedPerformance->CopyClass();
  resistance->HullDragMethod(method);
  const bool ok =
      CalcDragPredictionCT(*set.WaterProperties, *hull, *appendage, *environment, *ittc78, *resistance, *sp);
  CalcErrorsPending();  // the texts of a trial run are not the user's
  if (!ok) return false;
  ModelSet copy = set;
  copy.SpeedPerformance = sp;
  GetGraphFieldData(copy, Column("DragBareHull"), units, drag);
  return true;
}

// The same column of a propulsion run with interaction method `m`, on copies.
bool PropulsionOfInteraction(const ModelSet& set, int method, int column, std::vector<double>& values,
                             const clsVXUnits& units) {
  auto hull = set.Hull->CopyClass();
  auto ittc78 = set.ITTC78->CopyClass();
  auto resistance = set.Resistance->CopyClass();
  auto propulsion = set.Propulsion->CopyClass();
  auto propeller = set.Propeller->CopyClass();
  auto series = set.PropellerSeries->CopyClass();
  auto waterjet = set.Waterjet->CopyClass();
  auto engine = set.Engine->CopyClass();
  auto sp = set.SpeedPerformance->CopyClass();
  propulsion->PropulsionInteractionMethod(method);
  const bool ok = CalcPropulsionPrediction(*set.WaterProperties, *hull, *ittc78, *resistance, *propulsion,
                                           *propeller, *series, *waterjet, *engine, *sp);
  CalcErrorsPending();
  if (!ok) return false;
  ModelSet copy = set;
  copy.SpeedPerformance = sp;
  GetGraphFieldData(copy, column, units, values);
  return true;
}

// A method "holds" for the vessel when none of its speed, parameter and method checks fails.
bool MethodHolds(const MethodEvaluation& e) {
  return e.speedStatus != kCheckFail && e.parameterStatus != kCheckFail && e.methodStatus != kCheckFail;
}

// The confidence graph: a band from the lowest to the highest prediction of the methods that
// hold, and the chosen method's line inside it.
void BuildConfidence(GraphBuild& b, const GraphRequest& r, const GraphPreset& p,
                     const std::vector<GraphSource>& sources) {
  const ModelSet& set = *sources.front().set;
  const clsVXUnits& units = UnitsOf(sources);
  const bool hullFamily = p.kind == GraphPresetKind::ConfidenceHull;
  const MethodFamily family = hullFamily ? MethodFamily::Hull : MethodFamily::Interaction;
  const int yColumn = Column(p.y.front());
  std::vector<double> x, chosen;
  if (GetGraphFieldData(set, Column(p.x), units, x) == 0) return;
  GetGraphFieldData(set, yColumn, units, chosen);
  std::vector<double> lo(x.size(), std::numeric_limits<double>::infinity()),
      hi(x.size(), -std::numeric_limits<double>::infinity());
  int used = 0;
  // Methods the program computes: the hull drag methods of the ITTC-78 (CT) route, or every
  // interaction method.
  static const int kHullMethods[] = {kHullDragHoltrop,       kHullDragOortmerssen,  kHullDragDelftSeries1,
                                     kHullDragDelftSeries12, kHullDragDelftSeries2, kHullDragDelftSeries123,
                                     kHullDragDelftSeries23, kHullDragMercier,      kHullDragAndersen};
  const bool planing = hullFamily && set.ITTC78->HullHydrodynamicType() == kHydroPlaning;
  for (const MethodEvaluation& e : EvaluateMethods(family, set, r.mode)) {
    if (hullFamily && (planing || std::find(std::begin(kHullMethods), std::end(kHullMethods),
                                            e.methodIndex) == std::end(kHullMethods)))
      continue;
    if (!MethodHolds(e)) continue;
    std::vector<double> v;
    const bool ok = hullFamily ? HullDragOfMethod(set, e.methodIndex, v, units)
                               : PropulsionOfInteraction(set, e.methodIndex, yColumn, v, units);
    if (!ok || v.size() != x.size()) continue;
    ++used;
    for (size_t i = 0; i < v.size(); ++i)
      if (std::isfinite(v[i]) && v[i] > 0) lo[i] = std::min(lo[i], v[i]), hi[i] = std::max(hi[i], v[i]);
  }
  // The chosen method belongs to the spread whatever its checks say.
  for (size_t i = 0; i < x.size() && i < chosen.size(); ++i)
    lo[i] = std::min(lo[i], chosen[i]), hi[i] = std::max(hi[i], chosen[i]);
  GraphSeries band;
  band.kind = SeriesKind::Area;
  band.areaBrush = Brush{Rgb(0x1f, 0x4e, 0x9c, 60)};
  band.pen = Pen{Rgb(0x1f, 0x4e, 0x9c, 120), 0.8};
  const int bandIndex = b.graph.AddDataSeries(band);
  b.graph.SetAreaData(bandIndex, x, lo, hi);
  GraphSeries line = LineSeries(MethodFamilyLabel(family, SelectedMethod(set, family)),
                                clsVXCoordinateGraph::DefaultSeriesColour(1), r.lineStyle);
  line.x = x, line.y = chosen;
  b.graph.AddDataSeries(std::move(line));
  b.graph.TitleGraph(std::string(p.name) + " - spread of " + std::to_string(used) + " " +
                     (hullFamily ? "hull" : "interaction") + (used == 1 ? " method" : " methods"));
}

bool HasEngine(const ModelSet& set) {
  return set.Engine && set.Engine->CurveCount(clsVXEngine::Curve::MaxPowerRPM) >= 2;
}

void BuildEngineLoad(GraphBuild& b, const GraphRequest& r, const std::vector<GraphSource>& sources) {
  const ModelSet& set = *sources.front().set;
  const clsVXEngine& engine = *set.Engine;
  const int powerUnit = set.Units->Index(UnitFamily::Power);
  auto power = [&](std::vector<double> v) {
    for (double& p : v) p = UnitsOf(sources).Convert(UnitFamily::Power, p, kCurrent, powerUnit);
    return v;
  };
  GraphSeries max = LineSeries("Max power", kNeutral, LineStyle::Polyline);
  max.x = engine.MaxPowerRPMArray(), max.y = power(engine.MaxPowerPowerArray());
  b.graph.AddDataSeries(std::move(max));
  GraphSeries net = LineSeries("Less parasitic", kNeutral, LineStyle::Polyline, DashStyle::Dash);
  net.x = engine.MaxPowerRPMArray(), net.y = power(engine.NetMaxPowerPowerLessParasiticArray());
  b.graph.AddDataSeries(std::move(net));
  if (engine.CurveCount(clsVXEngine::Curve::DefinedLoadRPM) >= 2) {
    GraphSeries load =
        LineSeries("Defined load", clsVXCoordinateGraph::DefaultSeriesColour(2), LineStyle::Spline);
    load.x = engine.DefinedLoadRPMArray(), load.y = power(engine.DefinedLoadPowerArray());
    b.graph.AddDataSeries(std::move(load));
  }
  BuildPairs(b, r.lineStyle, Column("EngineRPM"), {Column("PowerBrakePerProp")}, 1.0, sources);
  b.graph.XAxis().caption = "RPM";
  b.graph.YAxis().caption = WithUnit("Power", UnitsOf(sources).Label(UnitFamily::Power));
  b.graph.TitleGraph("Engine load");
}

// The open-water curves of the propeller (Wageningen B-series at its blade count, area and
// pitch ratio) with the operating points and the two reference efficiencies.
void BuildPropellerCoefs(GraphBuild& b, const GraphRequest& r, const std::vector<GraphSource>& sources) {
  const ModelSet& set = *sources.front().set;
  clsVXPropeller& prop = *set.Propeller;
  const int z = prop.BladeCount();
  const double ear = prop.ExpAreaRatio();
  const double d = prop.Diameter(kFt), pd = d > 0 ? prop.PitchMean(kFt) / d : 0.0;
  prop.ClearErrorStack();
  if (z >= 2 && ear > 0 && pd > 0) {
    GraphSeries kt = LineSeries("KT", clsVXCoordinateGraph::DefaultSeriesColour(0), LineStyle::Polyline);
    GraphSeries kq = LineSeries("10*KQ", clsVXCoordinateGraph::DefaultSeriesColour(1), LineStyle::Polyline);
    GraphSeries eta = LineSeries("EFFO", clsVXCoordinateGraph::DefaultSeriesColour(2), LineStyle::Polyline);
    for (double j = 0.0; j <= 1.8; j += 0.02) {
      double t = 0, q = 0;
      if (!CalcKTBSeries(t, j, pd, ear, z) || !CalcKQBSeries(q, j, pd, ear, z) || t <= 0 || q <= 0) break;
      kt.x.push_back(j), kt.y.push_back(t);
      kq.x.push_back(j), kq.y.push_back(10 * q);
      eta.x.push_back(j), eta.y.push_back(j * t / (2 * Pi * q));
    }
    kt.lineLabel = "P/D = " + FormatNumber(pd, "0.000");
    kt.lineLabelPoint = static_cast<int>(kt.x.size()) / 3;
    b.graph.AddDataSeries(std::move(kt));
    b.graph.AddDataSeries(std::move(kq));
    b.graph.AddDataSeries(std::move(eta));
  }
  const clsVXUnits& units = UnitsOf(sources);
  std::vector<double> j, kt, effo, pitch;
  GetGraphFieldData(set, Column("CoefPropulsorJ"), units, j);
  GetGraphFieldData(set, Column("CoefPropulsorKT"), units, kt);
  GetGraphFieldData(set, Column("PropulsorEfficiency"), units, effo);
  GraphSeries op = LineSeries("Propulsor Efficiency", kNeutral, LineStyle::Markers);
  GraphSeries ideal = LineSeries("Ideal efficiency", clsVXCoordinateGraph::DefaultSeriesColour(3),
                                 r.lineStyle, DashStyle::Dash);
  GraphSeries best = LineSeries("Best practice", clsVXCoordinateGraph::DefaultSeriesColour(4), r.lineStyle,
                                DashStyle::DashDot);
  for (size_t i = 0; i < j.size() && i < kt.size() && i < effo.size(); ++i) {
    if (!(j[i] > 0) || !(kt[i] > 0)) continue;
    const double loading = kt[i] / (j[i] * j[i]);
    op.x.push_back(j[i]), op.y.push_back(effo[i]);
    ideal.x.push_back(j[i]), ideal.y.push_back(IdealEfficiency(loading));
    if (z >= 2 && ear > 0) best.x.push_back(j[i]), best.y.push_back(BestPracticeEfficiency(loading, z, ear));
  }
  b.graph.AddDataSeries(std::move(op));
  b.graph.AddDataSeries(std::move(ideal));
  b.graph.AddDataSeries(std::move(best));
  if (prop.PropellerType() == 1 && d > 0) {  // a controllable pitch: its operating P/D
    GetGraphFieldData(set, Column("CPMeanPitch"), *set.Units, pitch);
    GraphSeries pdSeries =
        LineSeries("P/D", clsVXCoordinateGraph::DefaultSeriesColour(5), LineStyle::Markers);
    for (size_t i = 0; i < pitch.size() && i < j.size(); ++i)
      pdSeries.x.push_back(j[i]),
          pdSeries.y.push_back(set.Units->Convert(UnitFamily::PropLength, pitch[i], kFt, kCurrent) / d);
    b.graph.AddDataSeries(std::move(pdSeries));
  }
  const double angle = set.Hull ? set.Hull->AngleShaftDeg() : 0.0;
  set.Hull->ClearErrorStack();
  b.graph.TitleGraph("Propeller coefficients [sub-cav; oblique=" + FormatNumber(angle, "0.0") + "]");
  b.graph.XAxis().caption = "J";
  b.graph.YAxis().caption = "KT, 10*KQ, EFFO";
}

// "PSN influence": open-water efficiency against J for pitch ratios around the propeller's,
// with the operating points.
void BuildPitchMap(GraphBuild& b, const GraphRequest& r, const std::vector<GraphSource>& sources) {
  const ModelSet& set = *sources.front().set;
  clsVXPropeller& prop = *set.Propeller;
  const int z = prop.BladeCount();
  const double ear = prop.ExpAreaRatio();
  prop.ClearErrorStack();
  if (z >= 2 && ear > 0) {
    int k = 0;
    for (double pd = 0.6; pd <= 1.41; pd += 0.2, ++k) {
      GraphSeries s = LineSeries("", clsVXCoordinateGraph::DefaultSeriesColour(k), LineStyle::Polyline);
      for (double j = 0.02; j <= 1.8; j += 0.02) {
        double t = 0, q = 0;
        if (!CalcKTBSeries(t, j, pd, ear, z) || !CalcKQBSeries(q, j, pd, ear, z) || t <= 0 || q <= 0) break;
        s.x.push_back(j), s.y.push_back(j * t / (2 * Pi * q));
      }
      s.lineLabel = "P/D = " + FormatNumber(pd, "0.0");
      s.lineLabelPoint = std::max(0, static_cast<int>(s.x.size()) - 8);
      b.graph.AddDataSeries(std::move(s));
    }
  }
  BuildPairs(b, LineStyle::Markers, Column("CoefPropulsorJ"), {Column("PropulsorEfficiency")}, 1.0, sources);
  (void)r;
  b.graph.TitleGraph("PSN Influense plot");
  b.graph.XAxis().caption = "J";
  b.graph.YAxis().caption = "EFFO";
}

}  // namespace

const char* GraphFieldColumn(int field) {
  return field >= 0 && field < kGraphFieldCount ? kGraphFields[field] : "";
}

int GraphFieldFromName(std::string_view name) {
  for (int f = 0; f < kGraphFieldCount; ++f) {
    const int c = Column(kGraphFields[f]);
    if (EqualsNoCase(kGraphFields[f], name) || EqualsNoCase(SymbolOf(c), name)) return f;
  }
  return -1;
}

std::string ColumnCaption(int column, const clsVXUnits& units) {
  const FieldDesc& d = clsVXSpeedPerformance::Column(column);
  const std::string text = *d.description ? d.description : d.name;
  return WithUnit(text, d.family == UnitFamily::None ? "" : units.Label(d.family, kCurrent));
}

int GetGraphFieldData(const ModelSet& set, int column, const clsVXUnits& units, std::vector<double>& values) {
  values.clear();
  const clsVXSpeedPerformance& sp = *set.SpeedPerformance;
  if (sp.count() < 1 || column < 0 || column >= clsVXSpeedPerformance::kColumnCount) return 0;
  const UnitFamily f = clsVXSpeedPerformance::Column(column).family;
  for (int r = 0; r < sp.count(); ++r) {
    double v = sp.Raw(r, column);
    if (f != UnitFamily::None && set.Units.get() != &units)
      v = units.Convert(f, v, kCurrent, set.Units->Index(f));
    values.push_back(v);
  }
  return 1;
}

const std::vector<GraphPreset>& GraphPresets() {
  using K = GraphPresetKind;
  using R = YAxisRule;
  // name, kind, x, y, y scale, y axis, place in the resistance, propeller and waterjet lists
  static const std::vector<GraphPreset> presets = {
      {"Custom", K::Custom, "", {}, 1, R::Auto, {0, 0, 0}},
      {"SPEED:RBARE", K::Pair, "Speed", {"DragBareHull"}, 1, R::FromZero, {1, -1, -1}},
      {"SPEED:RTOTAL", K::Pair, "Speed", {"DragTotal"}, 1, R::FromZero, {2, -1, -1}},
      {"SPEED:PETOTAL", K::Pair, "Speed", {"PowerEffectiveTotal"}, 1, R::FromZero, {3, -1, -1}},
      {"[Confidence: RBARE]", K::ConfidenceHull, "Speed", {"DragBareHull"}, 1, R::FromZero, {4, -1, -1}},
      {"[ITTC-78 coefs]",
       K::Ittc78Coefs,
       "CoefFroudeLength",
       {"CoefDragBareHull", "CoefDragBareHullFriction", "CoefDragBareHullResiduary",
        "CoefDragBareHullRoughness", "CoefDragBareHullCorrAllowance"},
       1000,
       R::FromZero,
       {5, -1, -1}},
      {"SPEED:EFFO", K::Pair, "Speed", {"PropulsorEfficiency"}, 1, R::Efficiency, {-1, 1, 1}},
      {"SPEED:PSPROP", K::Pair, "Speed", {"PowerShaftPerProp"}, 1, R::FromZero, {-1, 2, 2}},
      {"SPEED:PBPROP", K::Pair, "Speed", {"PowerBrakePerProp"}, 1, R::FromZero, {-1, 3, 3}},
      {"SPEED:RPMENG", K::Pair, "Speed", {"EngineRPM"}, 1, R::Auto, {-1, 4, 4}},
      {"[Engine load]", K::EngineLoad, "EngineRPM", {"PowerBrakePerProp"}, 1, R::FromZero, {-1, 5, 6}},
      {"[Towpull]",
       K::Towpull,
       "Speed",
       {"TotalDeliveredThrust", "TotalNetTowpull", "DragTotal"},
       1,
       R::FromZero,
       {-1, 6, 7}},
      {"[Confidence: PBTOTAL]",
       K::ConfidenceInteraction,
       "Speed",
       {"PowerBrakeTotal"},
       1,
       R::FromZero,
       {-1, 7, 5}},
      {"[Confidence: EFFO]",
       K::ConfidenceInteraction,
       "Speed",
       {"PropulsorEfficiency"},
       1,
       R::Efficiency,
       {-1, 8, -1}},
      {"[Propeller coefs]",
       K::PropellerCoefs,
       "CoefPropulsorJ",
       {"CoefPropulsorKT", "CoefPropulsorKQ", "PropulsorEfficiency"},
       1,
       R::FromZero,
       {-1, 9, -1}},
      {"[Pitch map]", K::PitchMap, "CoefPropulsorJ", {"PropulsorEfficiency"}, 1, R::FromZero, {-1, 10, -1}},
      {"[Waterjet]",
       K::Waterjet,
       "Speed",
       {"PropulsorEfficiency", "OverallPropulsiveEfficiency"},
       1,
       R::FromZero,
       {-1, -1, 8}},
  };
  return presets;
}

std::vector<const GraphPreset*> PresetsOf(PresetList list) {
  std::vector<const GraphPreset*> out;
  const int l = static_cast<int>(list);
  for (const GraphPreset& p : GraphPresets())
    if (p.index[l] >= 0) {
      if (out.size() <= static_cast<size_t>(p.index[l])) out.resize(static_cast<size_t>(p.index[l]) + 1);
      out[static_cast<size_t>(p.index[l])] = &p;
    }
  return out;
}

PresetList PresetListFor(const ModelSet& set, Mode mode) {
  if (mode == Mode::Resistance) return PresetList::Resistance;
  constexpr int kWaterjetData = 3;
  return set.Propulsion && set.Propulsion->PropulsorCalcType() == kWaterjetData ? PresetList::Waterjet
                                                                                : PresetList::Propeller;
}

const GraphPreset* FindPreset(std::string_view name) {
  const std::string wanted = Trim(std::string(name));
  for (const GraphPreset& p : GraphPresets()) {
    std::string n = p.name;
    if (EqualsNoCase(n, wanted)) return &p;
    if (n.front() == '[' && EqualsNoCase(n.substr(1, n.size() - 2), wanted)) return &p;
  }
  return nullptr;
}

const char* GraphModeCaption(GraphMode mode) {
  static const char* kCaptions[] = {"Graph: Standard", "Graph: Single", "Graph: Multiple", "Graph: Custom"};
  return kCaptions[static_cast<int>(mode)];
}

std::vector<std::string> LineStyleLabels() {
  std::vector<std::string> out;
  for (int i = 0; i <= 4; ++i) out.emplace_back(LineStyleLabel(static_cast<LineStyle>(i)));
  return out;
}
std::vector<std::string> LegendOnLabels() { return {"Off", "On"}; }
std::vector<std::string> LegendPositionLabels() {
  return {LegendPositionLabel(0), LegendPositionLabel(1), LegendPositionLabel(2), LegendPositionLabel(3)};
}
std::string CompareFileCaption(int index) {
  return index == 0 ? "Active job:" : "File " + std::to_string(index) + ":";
}

bool PresetNeedsPropulsion(const GraphPreset& p) {
  for (const GraphPreset* q : PresetsOf(PresetList::Resistance))
    if (q == &p) return false;
  return true;
}

GraphBuild BuildPredictionGraph(const GraphRequest& r, const std::vector<GraphSource>& sources) {
  GraphBuild b;
  clsVXCoordinateGraph& g = b.graph;
  g.SetPlotMargins(kMargins[0], kMargins[1], kMargins[2], kMargins[3]);
  g.SetLegend(r.legendOn, r.legendPosition);
  if (sources.empty() || !sources.front().set || !sources.front().set->SpeedPerformance) return b;
  const ModelSet& set = *sources.front().set;
  const clsVXUnits& units = UnitsOf(sources);
  const GraphPreset* p = r.preset && r.preset->kind != GraphPresetKind::Custom ? r.preset : nullptr;
  const int xColumn = p ? Column(p->x) : r.xColumn;
  std::vector<int> yColumns;
  if (p)
    for (const char* y : p->y) yColumns.push_back(Column(y));
  else
    yColumns = r.yColumns;
  if (xColumn < 0 || yColumns.empty() || std::find(yColumns.begin(), yColumns.end(), -1) != yColumns.end()) {
    b.warnings.emplace_back("Graph data", xColumn < 0 ? "Error in X-axis data." : "Error in Y-axis data.");
    return b;
  }
  g.XAxis().caption = ColumnCaption(xColumn, units);
  g.YAxis().caption = yColumns.size() == 1 ? ColumnCaption(yColumns.front(), units) : "";
  try {
    switch (p ? p->kind : GraphPresetKind::Custom) {
      case GraphPresetKind::EngineLoad:
        if (!HasEngine(set)) {
          b.warnings.emplace_back(
              "Engine load",
              "Engine Load plot requires an engine component. Define an Engine file in the "
              "Propulsion data.");
          return b;
        }
        BuildEngineLoad(b, r, sources);
        break;
      case GraphPresetKind::ConfidenceHull:
      case GraphPresetKind::ConfidenceInteraction:
        BuildConfidence(b, r, *p, sources);
        break;
      case GraphPresetKind::PropellerCoefs:
        BuildPropellerCoefs(b, r, sources);
        break;
      case GraphPresetKind::PitchMap:
        BuildPitchMap(b, r, sources);
        break;
      default: {
        BuildPairs(b, r.lineStyle, xColumn, yColumns, p ? p->yScale : 1.0, sources);
        if (p && p->yScale != 1.0)
          g.YAxis().caption = "Coefficient x " + TickLabel(p->yScale);
        else if (yColumns.size() > 1) {
          const FieldDesc& d = clsVXSpeedPerformance::Column(yColumns.front());
          g.YAxis().caption = d.family == UnitFamily::None
                                  ? ""
                                  : WithUnit(FamilyInfo(d.family).name, units.Label(d.family, kCurrent));
        }
        if (g.Title().empty()) {
          const std::string yText = yColumns.size() == 1 ? SymbolOf(yColumns.front()) : (p ? p->name : "");
          g.TitleGraph(p && p->name[0] == '['
                           ? std::string(p->name).substr(1, std::string(p->name).size() - 2)
                           : yText + " vs " + SymbolOf(xColumn));
        }
      }
    }
  } catch (const std::exception& e) {
    b.warnings.emplace_back("creating graph", e.what());
    g.ClearAllDataSeries();
    return b;
  }
  if (sources.front().set->Project && g.Title().find(" - ") == std::string::npos &&
      !sources.front().label.empty())
    g.TitleGraph(g.Title() + " - " + sources.front().label);
  g.AutoAxes();
  if (!r.customOpen) ApplyYRule(g, p ? p->yRule : FieldRule(yColumns.front()));
  b.drawn = true;
  return b;
}

std::vector<CustomGraph> DefaultGraphs(Mode mode) {
  if (mode == Mode::Resistance) return {CustomGraph{2, 0, 4}, CustomGraph{3, 0, 4}};
  return {CustomGraph{3, 0, 9}, CustomGraph{1, 0, 12}};
}

std::vector<GraphRequest> GraphRequestsFor(GraphMode graphMode, const CustomGraphOptions& options,
                                           PresetList list, int selectedPreset, Mode mode) {
  const std::vector<const GraphPreset*> presets = PresetsOf(list);
  auto request = [&](const CustomGraph& c, bool customOpen) {
    GraphRequest r;
    r.mode = mode;
    r.lineStyle = options.lineStyle;
    r.legendOn = options.legendOn;
    r.legendPosition = options.legendPosition;
    r.customOpen = customOpen;
    r.preset = c.preset > 0 && static_cast<size_t>(c.preset) < presets.size()
                   ? presets[static_cast<size_t>(c.preset)]
                   : nullptr;
    r.xColumn = clsVXSpeedPerformance::ColumnIndex(GraphFieldColumn(c.xField));
    r.yColumns = {clsVXSpeedPerformance::ColumnIndex(GraphFieldColumn(c.yField))};
    return r;
  };
  std::vector<GraphRequest> out;
  switch (graphMode) {
    case GraphMode::Standard:
      out.push_back(request(DefaultGraphs(mode).front(), false));
      break;
    case GraphMode::Single:
      out.push_back(request(CustomGraph{selectedPreset, 0, 4}, false));
      break;
    case GraphMode::Multiple:
    case GraphMode::Custom:
      for (const CustomGraph& c : options.graphs) out.push_back(request(c, graphMode == GraphMode::Custom));
      break;
  }
  return out;
}

std::vector<std::string> SaveGraphFileTypes() { return {"JPEG (*.jpg)", "Bitmap (*.bmp)"}; }

std::string DefaultGraphImageName(std::string_view projectFileName) {
  std::string name(projectFileName);
  if (name.size() >= 5 && EqualsNoCase(name.substr(name.size() - 5), ".vxvl")) name.resize(name.size() - 5);
  return name;
}

ReportGraph MakeReportGraph(const clsVXCoordinateGraph& graph, std::string caption, double width,
                            double height) {
  ReportGraph out;
  out.caption = std::move(caption);
  out.width = width, out.height = height;
  clsVXCoordinateGraph copy = graph;
  out.svg = GraphSvg(copy, width, height);
  out.draw = [copy](DrawingSurface& s) mutable { copy.Refresh(s); };
  return out;
}

// Actuator-disc (Rankine-Froude momentum) theory: a disc that gives thrust T to a stream of
// speed Va has the ideal efficiency 2 / (1 + sqrt(1 + CT)), CT = T / (0.5 rho Va^2 A0) =
// 8 KT / (pi J^2) (Rankine 1865, R. E. Froude 1889; as in Carlton, Marine Propellers and Propulsion).
double IdealEfficiency(double thrustLoading) {
  if (!(thrustLoading >= 0)) return 0.0;
  return 2.0 / (1.0 + std::sqrt(1.0 + 8.0 * thrustLoading / Pi));
}

// "Best practice" is the best open-water efficiency that a Wageningen B-series propeller of
// the same blade count and area ratio reaches at the same thrust loading KT/J^2, over pitch
// ratios 0.5 to 1.4: the optimum-pitch envelope of the series' charts (Oosterveld & van
// Oossanen 1975), the usual yardstick of a well-designed conventional propeller.
double BestPracticeEfficiency(double thrustLoading, int bladeCount, double expAreaRatio) {
  if (!(thrustLoading > 0)) return 0.0;
  double best = 0.0;
  for (double pd = 0.5; pd <= 1.4001; pd += 0.05) {
    // KT/J^2 falls with J: bisect for the J that gives the loading.
    double lo = 0.01, hi = 1.8, kt = 0.0;
    auto loading = [&](double j) {
      double t = 0.0;
      return CalcKTBSeries(t, j, pd, expAreaRatio, bladeCount) ? t / (j * j) : -1.0;
    };
    if (loading(lo) < thrustLoading) continue;
    if (loading(hi) > thrustLoading) continue;
    for (int i = 0; i < 50; ++i) {
      const double mid = 0.5 * (lo + hi);
      (loading(mid) > thrustLoading ? lo : hi) = mid;
    }
    const double j = 0.5 * (lo + hi);
    double kq = 0.0;
    if (!CalcKTBSeries(kt, j, pd, expAreaRatio, bladeCount) ||
        !CalcKQBSeries(kq, j, pd, expAreaRatio, bladeCount) || kt <= 0 || kq <= 0)
      continue;
    best = std::max(best, j * kt / (2 * Pi * kq));
  }
  return best;
}

}  // namespace velmar
