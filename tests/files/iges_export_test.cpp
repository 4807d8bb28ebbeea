// The propeller IGES export: the blade area measured on the surfaces read back from the written
// file, the card form of the Global section per unit, and the refusals in their order.
#include "files/iges_export.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "core/test_support.h"
#include "core/units.h"
#include "propulsion/propeller.h"
#include "propulsion/propulsion_settings.h"

namespace velmar {
namespace {

constexpr double kPi = 3.14159265358979;

// The entities 128 of an IGES text, read from its Directory and Parameter sections.
std::vector<BSplineSurface> ReadSurfaces(const std::string& text) {
  std::vector<std::string> dir, par;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    EXPECT_EQ(line.size(), 80u) << line;
    if (line[72] == 'D') dir.push_back(line);
    if (line[72] == 'P') par.push_back(line);
  }
  std::vector<BSplineSurface> out;
  for (size_t i = 0; i + 1 < dir.size(); i += 2) {
    if (std::stoi(dir[i].substr(0, 8)) != 128) continue;
    const size_t first = std::stoul(dir[i].substr(8, 8)), count = std::stoul(dir[i + 1].substr(24, 8));
    std::string rec;
    for (size_t k = first - 1; k < first - 1 + count; ++k) rec += par[k].substr(0, 64);
    std::vector<double> v;
    std::istringstream cells(rec);
    for (std::string c; std::getline(cells, c, ',');) {
      for (char& ch : c) ch = ch == 'D' ? 'E' : ch;
      v.push_back(std::stod(c));
    }
    BSplineSurface s;
    s.countU = static_cast<int>(v[1]) + 1, s.countV = static_cast<int>(v[2]) + 1;
    s.degreeU = static_cast<int>(v[3]), s.degreeV = static_cast<int>(v[4]);
    size_t k = 10;
    auto take = [&](size_t n) {
      std::vector<double> r(v.begin() + k, v.begin() + k + n);
      k += n;
      return r;
    };
    s.knotsU = take(s.countU + s.degreeU + 1);
    s.knotsV = take(s.countV + s.degreeV + 1);
    const size_t n = static_cast<size_t>(s.countU) * s.countV;
    if (v[7] == 0)
      s.weights = take(n);
    else
      k += n;
    for (size_t j = 0; j < n; ++j, k += 3) s.poles.push_back({v[k], v[k + 1], v[k + 2]});
    out.push_back(s);
  }
  return out;
}

TEST(IgesExport, BladeAreaOfTheWrittenSurfacesIsTheExpandedArea) {
  for (const auto& row : testing::ReadTable("iges_blade_area_cases.txt", 7)) {
    BladeGeometryInput in;
    in.bladeCount = static_cast<int>(row.Num(0));
    in.diameter = row.Num(1), in.pitch = row.Num(2) * in.diameter, in.expAreaRatio = row.Num(3);
    in.rakeDeg = row.Num(4), in.skewDeg = row.Num(5);
    IGESExportResult counts;
    const std::string text = BuildPropellerIGES(in, static_cast<int>(row.Num(6)), "p.igs", 0, &counts);
    const std::vector<BSplineSurface> surfaces = ReadSurfaces(text);
    ASSERT_EQ(static_cast<int>(surfaces.size()), 2 * in.bladeCount + 3) << row.where;
    EXPECT_EQ(counts.bladeSurfaces, 2 * in.bladeCount) << row.where;
    // Every blade surface (polynomial; the hub's are rational) unrolled section by section.
    double area = 0.0, reach = 0.0;
    for (const BSplineSurface& s : surfaces) {
      if (s.Rational()) continue;
      std::vector<double> radii, chords;
      for (int k = 0; k <= 400; ++k) {
        const UnrolledSection sec = UnrollSection(s, s.VStart() + (s.VEnd() - s.VStart()) * k / 400.0);
        radii.push_back(sec.radius);
        chords.push_back(sec.chord);
        reach = std::max(reach, sec.radius);
      }
      area += 0.5 * ExpandedBladeArea(radii, chords);  // face and back span the same section
    }
    const double expected = in.expAreaRatio * kPi * in.diameter * in.diameter / 4.0;
    EXPECT_NEAR(area / expected, 1.0, 0.03) << row.where;
    EXPECT_LE(reach, 0.5 * in.diameter) << row.where;
  }
}

TEST(IgesExport, GlobalSectionCarriesTheUnitRecordOfThePropellerLengthUnit) {
  const char* records[] = {"4,2HFT,1,0.00083333333D0", "6,1HM,1,0.000254D0", "1,4HINCH,1,0.01D0",
                           "2,2HMM,1,0.254D0"};
  BladeGeometryInput in;
  in.diameter = 3.0, in.pitch = 3.0, in.expAreaRatio = 0.6, in.bladeCount = 4;
  for (int unit = 0; unit < 4; ++unit) {
    std::string global;
    std::istringstream lines(BuildPropellerIGES(in, unit, "prop.igs", 0));
    for (std::string l; std::getline(lines, l);)
      if (l[72] == 'G') global += l.substr(0, 72);
    EXPECT_EQ(global.find("1H,,1H;,,9HCorvenith,21HIGES Simple Propeller,8Hprop.igs,32,38,6,308,15,,1.0D0,"),
              0u);
    EXPECT_NE(global.find(std::string(",1.0D0,") + records[unit] + ",13H"), std::string::npos) << unit;
    EXPECT_NE(global.find(",0.001D0,1.574206D0,"), std::string::npos);
  }
}

TEST(IgesExport, RefusesInTheOrderTypePropulsorDiameterBlades) {
  struct Case {
    int type, propulsor;
    double diameter;
    int blades;
    const char* message;
  };
  const Case cases[] = {
      {2, 3, 0.0, 0, "Propeller type not supported."},  // every fault: the first test speaks
      {0, 3, 0.0, 0, "Invalid propulsor type."},
      {1, 2, 0.0, 4, "Invalid propeller diameter."},
      {0, 0, 3.0, 1, "Invalid number of propeller blades."},
      {0, 0, 3.0, 8, "Invalid number of propeller blades."},
      {1, 1, 3.0, 7, ""},
  };
  auto units = std::make_shared<clsVXUnits>();
  for (const Case& c : cases) {
    clsVXPropeller prop(units);
    clsVXPropulsion propulsion(units);
    prop.PropellerType(c.type);
    propulsion.PropulsorCalcType(c.propulsor);
    prop.Diameter(kCurrent, c.diameter);
    prop.PitchMean(kCurrent, 3.0);
    prop.ExpAreaRatio(0.6);
    prop.BladeCount(c.blades);
    EXPECT_EQ(CheckPropellerForIGES(prop, propulsion), c.message);
  }
}

}  // namespace
}  // namespace velmar
