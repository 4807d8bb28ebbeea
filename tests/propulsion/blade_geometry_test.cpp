// The Wageningen B-series blade: section data against the check values of the published
// tables, and the fitted surfaces through the section points.
#include "propulsion/blade_geometry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "core/test_support.h"

namespace velmar {
namespace {

TEST(BladeGeometry, SectionsMatchTheSeriesCheckValues) {
  BladeGeometryInput in;
  in.diameter = 1.0, in.pitch = 1.0, in.expAreaRatio = 0.70, in.bladeCount = 4;
  for (const auto& row : testing::ReadTable("bseries_blade_check_values.txt", 4)) {
    const double x = row.Num(0);
    const SectionData d = BSeriesSection(in, x);
    EXPECT_NEAR(d.chord, row.Num(1), 6e-5) << row.where;
    EXPECT_NEAR(d.thickness, row.Num(2), 6e-5) << row.where;
    const double phi = std::atan(d.localPitch / (3.14159265358979 * x)) * 180.0 / 3.14159265358979;
    EXPECT_NEAR(phi, row.Num(3), 6e-4) << row.where;
  }
}

TEST(BladeGeometry, SurfacesPassThroughTheSectionCorners) {
  BladeGeometryInput in;
  in.diameter = 2.0, in.pitch = 1.6, in.expAreaRatio = 0.55, in.bladeCount = 3;
  BladeGeometry g;
  ASSERT_TRUE(BuildBladeGeometry(in, g));
  auto near = [](const Point3& a, const Point3& b) {
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z) < 1e-9;
  };
  // Face and back start at the root trailing edge and end at the tip leading edge.
  for (const BSplineSurface* s : {&g.face, &g.back}) {
    EXPECT_TRUE(near(s->Evaluate(s->UStart(), s->VStart()), g.sections.front().face.front()));
    EXPECT_TRUE(near(s->Evaluate(s->UEnd(), s->VEnd()), g.sections.back().face.back()));
  }
  // Every section point lies on its cylinder: the section is wrapped, not projected.
  for (const BladeSection& sec : g.sections)
    for (const Point3& p : sec.back) EXPECT_NEAR(std::hypot(p.y, p.z), sec.radius, 1e-12);
  EXPECT_NEAR(g.hubRadius, 0.5 * kBSeriesHubRatio * in.diameter, 1e-12);
  BladeGeometry none;
  in.expAreaRatio = 0.0;
  EXPECT_FALSE(BuildBladeGeometry(in, none));
}

}  // namespace
}  // namespace velmar
