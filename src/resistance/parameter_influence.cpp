// Parameter influence of the hull drag prediction.
#include "resistance/parameter_influence.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

#include "core/model_set.h"
#include "core/diagnostics.h"
#include "core/format.h"
#include "core/ui_hooks.h"
#include "resistance/resistance_driver.h"

namespace velmar {
namespace {

using HF = clsVXHull::Field;

// How a row changes its parameter on the working copy of the hull (stored values, current
// units). The relative steps are one part in a thousand; the areas that may be 0 (bulb,
// transom) and the shape factors step by a thousandth of a reference instead.
enum class Step {
  Scale,            // value x 1.001
  AddOwn,           // value + 0.001 x the project hull's value
  AddOwnOrTenthAX,  // as AddOwn, the reference raised to 0.1 x AreaSectMax if that is greater
  AddOne,           // value + 0.001
};

struct InfluenceRow {
  HF field;
  Step step;
};

constexpr InfluenceRow kRows[] = {
    {HF::Displacement, Step::Scale},      {HF::LengthWL, Step::Scale},
    {HF::BeamWLMax, Step::Scale},         {HF::DraftSubmergedMax, Step::Scale},
    {HF::WettedSurface, Step::Scale},     {HF::XBuoyancyFwdTr, Step::Scale},
    {HF::AreaSectMax, Step::Scale},       {HF::AreaWaterplane, Step::Scale},
    {HF::BulbAreaSect, Step::AddOwn},     {HF::AreaSectAtTr, Step::AddOwnOrTenthAX},
    {HF::AngleHalfEntDeg, Step::Scale},   {HF::BowShapeFactor, Step::AddOne},
    {HF::SternShapeFactor, Step::AddOne},
};

// The private objects of the experiment: copies of the project's data classes, linked among
// themselves (so that no read reaches a project object, not even its error stack), and a
// speed table of one row at the design speed.
struct Workbench {
  const ModelSet& project;
  std::shared_ptr<clsVXWaterProperties> water;
  std::shared_ptr<clsVXEnvironment> environment;
  std::shared_ptr<clsVXITTC78Expansion> ittc78;
  std::shared_ptr<clsVXResistance> resistance;
  std::shared_ptr<clsVXSpeedPerformance> table;
  std::shared_ptr<clsVXHull> hull;
  std::shared_ptr<clsVXAppendage> appendage;

  Workbench(const ModelSet& p, double designSpeed) : project(p) {
    water = p.WaterProperties->CopyClass();
    environment = p.Environment->CopyClass();
    environment->SetLinkedClasses(p.Units, water);
    ittc78 = p.ITTC78->CopyClass();
    resistance = p.Resistance->CopyClass();
    table = std::make_shared<clsVXSpeedPerformance>(p.Units, water);
    table->count(1);
    table->Speed(0, kCurrent, designSpeed);
    NewHull();
  }

  // A fresh copy of the project's hull (and of its appendages, which read the hull).
  void NewHull() {
    hull = project.Hull->CopyClass();
    hull->SetLinkedClasses(project.Units, water);
    appendage = project.Appendage->CopyClass();
    appendage->SetLinkedClasses(project.Units, water, hull);
  }

  bool Predict() {
    return CalcDragPredictionCT(*water, *hull, *appendage, *environment, *ittc78, *resistance, *table);
  }
  double BareHullDrag() const { return table->DragBareHull(0, kCurrent); }
};

void ApplyStep(const InfluenceRow& r, const clsVXHull& projectHull, clsVXHull& hull) {
  const int f = FieldId(r.field);
  double reference = projectHull.Raw(f);
  switch (r.step) {
    case Step::Scale:
      hull.SetRaw(f, hull.Raw(f) * 1.001);
      return;
    case Step::AddOwnOrTenthAX:
      reference = std::max(reference, 0.1 * projectHull.Raw(FieldId(HF::AreaSectMax)));
      [[fallthrough]];
    case Step::AddOwn:
      hull.SetRaw(f, hull.Raw(f) + 0.001 * reference);
      return;
    case Step::AddOne:
      hull.SetRaw(f, hull.Raw(f) + 0.001 * 1.0);
      return;
  }
}

// The influence of the change on the working copy: (D1 - D0) 1000 / D0, the percent change
// of drag for one percent change of the parameter. 0 for a hull type other than ITTC-78 (CT),
// a failed prediction or a basis drag that is not above 0.
double CalcParameterInfluence(Workbench& bench, double basisDrag) {
  if (bench.ittc78->HullHydrodynamicType() != kHydroITTC78CT) return 0.0;
  if (!bench.Predict() || !(basisDrag > 0.0)) return 0.0;
  return (bench.BareHullDrag() - basisDrag) * 1000.0 / basisDrag;
}

}  // namespace

ParameterInfluence BuildParameterInfluence() {
  const ModelSet& p = App().primary;
  ParameterInfluence out;
  out.title = p.Resistance->HullDragMethodLabel();
  // A drag that is scaled from a test or entered by hand has no prediction to vary.
  const int technique = p.Resistance->HullDragTechnique();
  if (technique == kTechniqueScaleFromTest || technique == kTechniqueDefined) {
    out.refusal = std::string("Sensitivity analysis is not available for ") +
                  (technique == kTechniqueDefined ? "Defined" : "Scaled from test") +
                  " resistance techniques.";
    Hooks().ShowMessage("Sensitivity analysis", out.refusal, 0);
    return out;
  }
  for (const InfluenceRow& r : kRows) {
    out.rows.push_back({p.Hull->FieldNameOf(FieldId(r.field)), "---", false, 0.0});
  }

  const clsVXSpeedPerformance& sp = *p.SpeedPerformance;
  const int design = sp.DesignSpeedIndex();
  if (design < 0 || design >= sp.count()) return out;
  const double designSpeed = sp.Raw(design, FieldId(clsVXSpeedPerformance::Field::Speed));
  if (!(designSpeed > 0.0)) return out;
  out.designSpeed = true;

  Workbench bench(p, designSpeed);
  out.basisOk = bench.Predict();
  if (!out.basisOk) {
    CalcErrorsPending();
    out.basisCause = GetCalcErrorText();
    out.warning = ShowWarning(0, "Parameter influence", "Basis hull resistance prediction", -1.0);
    return out;
  }
  out.basisDrag = bench.BareHullDrag();

  for (size_t i = 0; i < std::size(kRows); ++i) {
    bench.NewHull();
    ApplyStep(kRows[i], *p.Hull, *bench.hull);
    const double v = CalcParameterInfluence(bench, out.basisDrag);
    out.rows[i] = {out.rows[i].caption, FormatNumber(v, "0.000"), std::fabs(v) > 1.0, v};
  }
  // A row's failure gives 0 and no message; its cause is not kept for a later Calculate.
  SetCalcLocation("Parameter influence");
  return out;
}

}  // namespace velmar
