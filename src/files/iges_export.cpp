// IGES propeller export. Layout of the file (all text built in memory, written by one call):
//   Start      one line that says what the model is
//   Global     delimiters, sender, file name, number limits, scale, unit record, date,
//              resolution, maximum coordinate, version flag
//   Directory  two lines of nine 8-column fields per entity
//   Parameter  the entity's record cut at commas into lines of 64 columns, then the entity's
//              directory line number and the section letter
//   Terminate  the line counts of the four sections
// Entities in order: colour (314), level definition (406 form 3), the name "3d point" (406
// form 15) and the origin point (116) that carries it, the name "TrimSrf" (406 form 15), then
// the face and back surface of every blade (128, patterned about the shaft axis by the blade
// count) and the hub patches (128 surfaces of revolution), each named "TrimSrf".
#include "files/iges_export.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <vector>

#include "core/format.h"
#include "core/units.h"
#include "files/safe_write.h"
#include "propulsion/propeller.h"
#include "propulsion/propulsion_settings.h"

namespace velmar {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kDataColumns = 72, kParamColumns = 64;

// The unit flag, unit name, line weight gradations and maximum line width of each propeller
// length unit (ft, m, in, mm).
const char* const kUnitRecords[4][4] = {{"4", "2HFT", "1", "0.00083333333D0"},
                                        {"6", "1HM", "1", "0.000254D0"},
                                        {"1", "4HINCH", "1", "0.01D0"},
                                        {"2", "2HMM", "1", "0.254D0"}};

const char* const kUnitNames[4] = {"FT", "M", "INCH", "MM"};

std::string Num(double v) {
  if (std::fabs(v) < 5e-7) v = 0.0;  // no "-0.0"
  return FormatNumber(v, "#####0.0#####") + "D0";
}
std::string Int(int v) { return std::to_string(v); }
std::string Hollerith(const std::string& s) { return std::to_string(s.size()) + "H" + s; }
std::string RightIn8(const std::string& s) {
  return s.size() >= 8 ? s.substr(0, 8) : std::string(8 - s.size(), ' ') + s;
}

class IgesText {
 public:
  void Start(const std::string& text) { Line(start_, 'S', nS_, text.substr(0, kDataColumns)); }

  // Fields joined by the parameter delimiter and closed by the record delimiter, cut at commas.
  void Global(const std::vector<std::string>& fields) {
    for (const std::string& l : Cut(fields, kDataColumns)) Line(global_, 'G', nG_, l);
  }

  // One entity: its parameter record and two directory lines. Returns its directory number.
  int Entity(int type, int form, const std::vector<std::string>& params, const std::string& label,
             const std::string& status = "00000000", int colour = 0) {
    const int de = nD_ + 1;
    const int firstP = nP_ + 1;
    const std::vector<std::string> lines = Cut(params, kParamColumns);
    for (const std::string& l : lines) {
      std::string padded = l;
      padded.resize(kParamColumns, ' ');
      Line(param_, 'P', nP_, padded + RightIn8(Int(de)));
    }
    const std::string t = RightIn8(Int(type)), z = RightIn8("0");
    Line(dir_, 'D', nD_, t + RightIn8(Int(firstP)) + z + z + z + z + z + z + status);
    Line(dir_, 'D', nD_,
         t + z + RightIn8(Int(colour)) + RightIn8(Int(static_cast<int>(lines.size()))) + RightIn8(Int(form)) +
             RightIn8("") + RightIn8("") + RightIn8(label) + z);
    return de;
  }

  std::string Text() const {
    auto field = [](char letter, int n) { return letter + FormatNumber(n, "0000000"); };
    std::string terminate;
    std::string body = field('S', nS_) + field('G', nG_) + field('D', nD_) + field('P', nP_);
    int nT = 0;
    Line(terminate, 'T', nT, body);
    return start_ + global_ + dir_ + param_ + terminate;
  }

 private:
  // Pads the data to 72 columns, adds the section letter and the running line number.
  static void Line(std::string& section, char letter, int& count, std::string data) {
    data.resize(kDataColumns, ' ');
    section += data + letter + FormatNumber(++count, "0000000") + "\n";
  }

  // Tokens joined by ',' and ended by ';', cut into lines of `width` at the delimiters. A token
  // too long for a line of its own (a long file name) is continued on the next line.
  static std::vector<std::string> Cut(const std::vector<std::string>& tokens, size_t width) {
    std::vector<std::string> lines(1);
    for (size_t i = 0; i < tokens.size(); ++i) {
      std::string tok = tokens[i] + (i + 1 < tokens.size() ? "," : ";");
      if (!lines.back().empty() && lines.back().size() + tok.size() > width) lines.emplace_back();
      while (lines.back().size() + tok.size() > width) {
        const size_t room = width - lines.back().size();
        lines.back() += tok.substr(0, room);
        tok.erase(0, room);
        lines.emplace_back();
      }
      lines.back() += tok;
    }
    return lines;
  }

  std::string start_, global_, dir_, param_;
  int nS_ = 0, nG_ = 0, nD_ = 0, nP_ = 0;
};

// Parameters of entity 128: counts, degrees, flags, knots, weights, poles, parameter range,
// then the name property.
std::vector<std::string> SurfaceRecord(const BSplineSurface& s, int nameDE) {
  std::vector<std::string> p = {"128",
                                Int(s.countU - 1),
                                Int(s.countV - 1),
                                Int(s.degreeU),
                                Int(s.degreeV),
                                "0",
                                s.closedV ? "1" : "0",
                                s.Rational() ? "0" : "1",
                                "0",
                                "0"};
  for (double k : s.knotsU) p.push_back(Num(k));
  for (double k : s.knotsV) p.push_back(Num(k));
  for (size_t i = 0; i < s.poles.size(); ++i) p.push_back(Num(s.Rational() ? s.weights[i] : 1.0));
  for (const Point3& q : s.poles) {
    p.push_back(Num(q.x));
    p.push_back(Num(q.y));
    p.push_back(Num(q.z));
  }
  for (double v : {s.UStart(), s.UEnd(), s.VStart(), s.VEnd()}) p.push_back(Num(v));
  p.insert(p.end(), {"0", "1", Int(nameDE)});
  return p;
}

// A polynomial B-spline curve (entity 126).
struct Curve {
  int degree = 1;
  std::vector<double> knots;
  std::vector<Point3> poles;
};

// Parameters of entity 126; a parameter-space curve lies in the plane z = 0.
std::vector<std::string> CurveRecord(const Curve& c, bool planar) {
  const int n = static_cast<int>(c.poles.size());
  std::vector<std::string> p = {"126", Int(n - 1), Int(c.degree), planar ? "1" : "0", "0", "1", "0"};
  for (double k : c.knots) p.push_back(Num(k));
  for (int i = 0; i < n; ++i) p.push_back(Num(1.0));
  for (const Point3& q : c.poles) p.insert(p.end(), {Num(q.x), Num(q.y), Num(q.z)});
  p.insert(p.end(), {Num(c.knots[c.degree]), Num(c.knots[n]), Num(0), Num(0), Num(planar ? 1 : 0)});
  return p;
}

Curve Reversed(Curve c) {
  const double sum = c.knots.front() + c.knots.back();
  std::reverse(c.poles.begin(), c.poles.end());
  std::reverse(c.knots.begin(), c.knots.end());
  for (double& k : c.knots) k = sum - k;
  return c;
}

// The edges of a surface's parameter rectangle as one closed loop: v = v0 (u rising), u = u1
// (v rising), v = v1 (u falling), u = u0 (v falling). Each edge twice: in model space (the
// row or column of boundary poles, exact for the clamped knots) and in the parameter plane.
std::vector<std::pair<Curve, Curve>> BoundaryLoop(const BSplineSurface& s) {
  auto row = [&](int j) {
    Curve c{s.degreeU, s.knotsU, {}};
    for (int i = 0; i < s.countU; ++i) c.poles.push_back(s.poles[static_cast<size_t>(j) * s.countU + i]);
    return c;
  };
  auto column = [&](int i) {
    Curve c{s.degreeV, s.knotsV, {}};
    for (int j = 0; j < s.countV; ++j) c.poles.push_back(s.poles[static_cast<size_t>(j) * s.countU + i]);
    return c;
  };
  auto line = [](const Curve& model, Point3 a, Point3 b) {
    const double t0 = model.knots[model.degree], t1 = model.knots[model.poles.size()];
    return Curve{1, {t0, t0, t1, t1}, {a, b}};
  };
  const double u0 = s.UStart(), u1 = s.UEnd(), v0 = s.VStart(), v1 = s.VEnd();
  const Curve bottom = row(0), right = column(s.countU - 1), top = Reversed(row(s.countV - 1)),
              left = Reversed(column(0));
  return {{bottom, line(bottom, {u0, v0, 0}, {u1, v0, 0})},
          {right, line(right, {u1, v0, 0}, {u1, v1, 0})},
          {top, line(top, {u1, v1, 0}, {u0, v1, 0})},
          {left, line(left, {u0, v1, 0}, {u0, v0, 0})}};
}

}  // namespace

std::string CheckPropellerForIGES(const clsVXPropeller& propeller, const clsVXPropulsion& propulsion) {
  // A contra-rotating pair is two propellers of different blades; the model is one propeller.
  if (propeller.PropellerType() == 2) return "Propeller type not supported.";
  if (propulsion.PropulsorCalcType() == 3) return "Invalid propulsor type.";
  if (!(propeller.Diameter(kCurrent) > 0.0)) return "Invalid propeller diameter.";
  // The blade tables of the series cover 2 to 7 blades.
  if (propeller.BladeCount() < 2 || propeller.BladeCount() > 7) return "Invalid number of propeller blades.";
  if (!(propeller.PitchMean(kCurrent) > 0.0)) return "Invalid propeller pitch.";
  if (!(propeller.ExpAreaRatio() > 0.0)) return "Invalid expanded area ratio.";
  return {};
}

BladeGeometryInput IGESBladeInput(const clsVXPropeller& propeller) {
  BladeGeometryInput in;
  in.diameter = propeller.Diameter(kCurrent);
  in.pitch = propeller.PitchMean(kCurrent);
  in.expAreaRatio = propeller.ExpAreaRatio();
  in.bladeCount = propeller.BladeCount();
  const double hub = propeller.HubDiameterRatio();
  in.hubRatio = hub > 0.0 && hub < 0.5 ? hub : 0.0;
  in.rakeDeg = propeller.RakeAngleDeg() != 0.0 ? propeller.RakeAngleDeg() : 15.0;
  in.skewDeg = propeller.SkewAngleTotalDeg();
  return in;
}

std::string BuildPropellerIGES(const BladeGeometryInput& input, int unitIndex, const std::string& fileName,
                               std::time_t stamp, IGESExportResult* counts) {
  BladeGeometry blade;
  if (!BuildBladeGeometry(input, blade)) return {};
  if (unitIndex < 0 || unitIndex > 3) unitIndex = 0;
  const std::string date = FormatDate(LocalTime(stamp), "yymmdd.hhmmss");

  IgesText f;
  f.Start("Propeller: " + Int(input.bladeCount) + " blades, D " + FormatNumber(input.diameter, "0.0###") +
          " " + kUnitNames[unitIndex] + ", P/D " + FormatNumber(input.pitch / input.diameter, "0.000") +
          ", AE/A0 " + FormatNumber(input.expAreaRatio, "0.000") + ", B-series sections");
  std::vector<std::string> g = {
      "1H,",  "1H;", "",    "9HCorvenith", "21HIGES Simple Propeller", Hollerith(fileName), "32",
      "38",   "6",   "308", "15",
      "",  // product identification for the receiver
      "1.0D0"};
  g.insert(g.end(), kUnitRecords[unitIndex], kUnitRecords[unitIndex] + 4);
  g.insert(g.end(), {"13H" + date, "0.001D0", "1.574206D0", "", "", "11", "0", "13H" + date});
  f.Global(g);

  const int colour =
      f.Entity(314, 0, {"314", "0.0", "0.0", "0.0", "20HRGB(   0,   0,   0 )"}, "COLOR", "00000200");
  f.Entity(406, 3, {"406", "2", "1", "9HPropeller"}, "LEVELDEF", "00000200");
  const int pointName = f.Entity(406, 15, {"406", "1", "8H3d point"}, "NAMETXT", "00000200");
  f.Entity(116, 0, {"116", Num(0), Num(0), Num(0), "0", "0", "1", Int(pointName)}, "3d Point");
  const int surfaceName = f.Entity(406, 15, {"406", "1", "7HTrimSrf"}, "NAMETXT", "00000200");

  // The blade surfaces, then each bounded by its parameter rectangle (126 edges, 141, 143).
  std::vector<std::pair<int, BSplineSurface>> bladeSurfaces;
  for (int k = 0; k < input.bladeCount; ++k) {
    const double angle = 2.0 * kPi * k / input.bladeCount;
    for (const BSplineSurface* s : {&blade.face, &blade.back}) {
      BSplineSurface turned = RotatedAboutAxis(*s, angle);
      const int de = f.Entity(128, 0, SurfaceRecord(turned, surfaceName), "TrimSrf", "00010000", -colour);
      bladeSurfaces.emplace_back(de, std::move(turned));
    }
  }
  for (const auto& [surfaceDE, s] : bladeSurfaces) {
    std::vector<std::string> boundary = {"141", "1", "3", Int(surfaceDE), "4"};
    for (const auto& [model, plane] : BoundaryLoop(s)) {
      const int m = f.Entity(126, 0, CurveRecord(model, false), "", "00010000", -colour);
      const int q = f.Entity(126, 0, CurveRecord(plane, true), "", "00010500", -colour);
      boundary.insert(boundary.end(), {Int(m), "1", "1", Int(q)});
    }
    const int b = f.Entity(141, 0, boundary, "", "00010000");
    f.Entity(143, 0, {"143", "1", Int(surfaceDE), "1", Int(b)}, "TrimSrf", "00000000", -colour);
  }
  const std::vector<BSplineSurface> hub = HubSurfaces(blade);
  for (const BSplineSurface& s : hub)
    f.Entity(128, 0, SurfaceRecord(s, surfaceName), "TrimSrf", "00000000", -colour);
  if (counts) {
    counts->bladeSurfaces = static_cast<int>(bladeSurfaces.size());
    counts->hubSurfaces = static_cast<int>(hub.size());
  }
  return f.Text();
}

IGESExportResult ExportPropellerIGES(const std::filesystem::path& path, const BladeGeometryInput& input,
                                     int unitIndex, std::time_t stamp) {
  IGESExportResult r;
  try {
    const std::string text = BuildPropellerIGES(input, unitIndex, path.filename().string(), stamp, &r);
    if (text.empty()) {
      r.message = "building IGES propeller file: the propeller's data give no blade";
      return r;
    }
    const SafeWriteResult w = WriteFileSafely(path, text);
    r.ok = w.ok;
    r.message = w.message;
  } catch (const std::exception& e) {
    r.ok = false;
    r.message = std::string("building IGES propeller file: ") + e.what();
  }
  return r;
}

}  // namespace velmar
