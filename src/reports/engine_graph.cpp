#include "reports/engine_graph.h"

#include "core/diagnostics.h"

namespace velmar {
namespace {

GraphSeries Line(std::string legend, int colour, LineStyle style, DashStyle dash = DashStyle::Solid) {
  GraphSeries s;
  s.legend = std::move(legend);
  s.pen = Pen{clsVXCoordinateGraph::DefaultSeriesColour(colour), 1.6, dash};
  s.lineStyle = style;
  s.markerFill = Brush{clsVXCoordinateGraph::DefaultSeriesColour(colour)};
  return s;
}

}  // namespace

clsVXCoordinateGraph EngineDataGraph(const clsVXEngine& engine) {
  clsVXCoordinateGraph graph;
  try {
    using C = clsVXEngine::Curve;
    const bool maxPower = engine.CurveCount(C::MaxPowerRPM) >= 2;
    const bool definedLoad = engine.CurveCount(C::DefinedLoadRPM) >= 2;
    if (maxPower) {
      GraphSeries max = Line(" Performance curve", 0, LineStyle::PolylineMarkers);
      max.x = engine.MaxPowerRPMArray(), max.y = engine.MaxPowerPowerArray();
      graph.AddDataSeries(std::move(max));
      GraphSeries net = Line(" Performance curve less parasitic", 0, LineStyle::Polyline, DashStyle::Dash);
      net.x = engine.MaxPowerRPMArray(), net.y = engine.NetMaxPowerPowerLessParasiticArray();
      graph.AddDataSeries(std::move(net));
    }
    if (definedLoad) {
      // The defined-load curve is read by a cubic spline in the fuel-rate prediction.
      GraphSeries load = Line("Defined Load Curve", 2, LineStyle::SplineMarkers);
      load.x = engine.DefinedLoadRPMArray(), load.y = engine.DefinedLoadPowerArray();
      graph.AddDataSeries(std::move(load));
    }
    // Read as held, without the read checks: a missing rated point is no error of the graph.
    const double ratedRPM = engine.Raw(engine.FieldIndex("MaxRatedRPM"));
    const double ratedPower = engine.Raw(engine.FieldIndex("MaxRatedPower"));
    if (ratedRPM > 0 && ratedPower > 0) {
      GraphSeries rated = Line("Rated point", 3, LineStyle::Markers);
      rated.marker = MarkerShape::Diamond;
      rated.markerSize = 9.0;
      rated.x = {ratedRPM}, rated.y = {ratedPower};
      graph.AddDataSeries(std::move(rated));
    }
    if (!maxPower && !definedLoad) graph.SetNote("No engine curves");
    graph.XAxis().caption = "RPM";
    const std::string unit = engine.Units() ? engine.Units()->Label(UnitFamily::Power) : std::string();
    graph.YAxis().caption = "Power (" + unit + ")";
    graph.SetLegend(true, kLegendBottomRight);
    graph.AutoAxes(false, true);
  } catch (const std::exception&) {
    graph.ClearAllDataSeries();
    AddCalcError("creating results datasets and propulsion graph for engine file");
  }
  return graph;
}

}  // namespace velmar
