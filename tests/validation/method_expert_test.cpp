// The Method Expert: ranking and colours, a project without a design speed, accepting a
// method, and the estimate lists' check rows. The ratings of the bundled examples are pinned
// by method_ratings_golden_test.cpp.
#include "validation/method_expert.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "check_vessel.h"
#include "files/project_file.h"
#include "resistance/hull_estimates.h"

namespace velmar::testing {
namespace {

std::vector<int> Indices(const std::vector<MethodEvaluation>& list) {
  std::vector<int> out;
  for (const auto& e : list) out.push_back(e.methodIndex);
  return out;
}

TEST(MethodExpert, RanksByRatingAloneAndKeepsTiesInListOrder) {
  std::vector<MethodEvaluation> evaluations(6);
  const int ratings[] = {5, 6, 5, 0, 6, 3};
  for (int i = 0; i < 6; ++i) evaluations[i].methodIndex = i, evaluations[i].rating = ratings[i];
  EXPECT_EQ(Indices(RankMethods(evaluations)), (std::vector<int>{1, 4, 0, 2, 5, 3}));
  EXPECT_EQ(MethodRatingColour(6), (RgbColour{0, 0, 255}));
  EXPECT_EQ(MethodRatingColour(5), (RgbColour{255, 0, 255}));
  EXPECT_EQ(MethodRatingColour(4), (RgbColour{0, 0, 0}));
  EXPECT_EQ(MethodRatingColour(3), (RgbColour{255, 0, 0}));
  EXPECT_EQ(MethodExpertNoteLine(""), "Watch for notes here...");
}

TEST(MethodExpert, WithoutDesignSpeedEveryMethodRatesZeroInListOrder) {
  CheckVessel().Enter([](ModelSet& p) { p.SpeedPerformance->Speed(0, kKt, 0.0); });
  const MethodExpertList list = BuildMethodExpertList(MethodFamily::Hull, App().primary);
  EXPECT_FALSE(list.designSpeed);
  ASSERT_EQ(list.methods.size(), 36u);
  for (int i = 0; i < 36; ++i) {
    EXPECT_EQ(list.methods[i].methodIndex, i);
    EXPECT_EQ(list.methods[i].rating, 0);
    EXPECT_TRUE(list.methods[i].rows.empty());
    EXPECT_EQ(ParameterCheckLabel(list.methods[i].speedStatus), "");
  }
}

TEST(MethodExpert, AcceptingAMethodStoresItAndTheMatchingHydrodynamicType) {
  CheckVessel().Enter();
  const ModelSet& p = App().primary;
  p.ITTC78->HullHydrodynamicType(1);
  EXPECT_FALSE(ApplyMethodExpertResult(MethodFamily::Hull, {0, 32}, p));  // cancelled
  EXPECT_EQ(p.Resistance->HullDragMethod(), 0);
  EXPECT_TRUE(ApplyMethodExpertResult(MethodFamily::Hull, {1, 32}, p));
  EXPECT_EQ(p.Resistance->HullDragMethod(), 32);
  EXPECT_EQ(p.ITTC78->HullHydrodynamicType(), 2);
  EXPECT_TRUE(ApplyMethodExpertResult(MethodFamily::Hull, {1, 31}, p));
  EXPECT_EQ(p.ITTC78->HullHydrodynamicType(), 1);
  EXPECT_TRUE(ApplyMethodExpertResult(MethodFamily::Interaction, {1, 10}, p));
  EXPECT_EQ(p.Propulsion->PropulsionInteractionMethod(), 10);
  EXPECT_TRUE(ApplyMethodExpertResult(MethodFamily::Seas, {1, 2}, p));
  EXPECT_EQ(p.Resistance->SeasDragMethod(), 2);
  EXPECT_FALSE(ApplyMethodExpertResult(MethodFamily::Wind, {1, 99}, p));  // no such method
}

void OpenExample(const char* name) {
  FreshApp();
  ASSERT_TRUE(OpenProjectFile(ExamplePath(name)).opened) << name;
}

TEST(EstimateChecks, ProposalsFromADataSetCarryItsRows) {
  OpenExample("cargo_ship_si.vxvl");
  const std::vector<EstimateRow> rows =
      EstimateList(EstimateItem::WaterplaneArea, App().primary, App().CurrentMode);
  ASSERT_EQ(rows.size(), 5u);
  for (const EstimateRow& r : rows) EXPECT_FALSE(r.checkRows.empty()) << r.label;
  EXPECT_EQ(rows[2].checkRows.front().name, "CP");  // the Webb cargo ship's CP range
  const std::vector<EstimateRow> centres =
      EstimateList(EstimateItem::LongitudinalCentre, App().primary, App().CurrentMode);
  for (const EstimateRow& r : centres) EXPECT_TRUE(r.checkRows.empty()) << r.label;
}

}  // namespace
}  // namespace velmar::testing
