// clsVXEngine: one engine: its rated point, the maximum-power curve with fuel rates, and an
// optional defined-load curve (propeller law or combinator curve) with fuel rates, and the
// lookups on both curves that the fuel-rate prediction and the engine graphs use.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/curve_fit.h"
#include "core/data_class.h"

namespace velmar {

// Points a curve holds; the file block always carries this many.
inline constexpr int kEngineCurvePoints = 10;

// The point lists of the two curves: name, accessor kind (Qty with a unit, Real without),
// unit family, file object, list tag. The count of a list is the count field of its object
// (MaxPowerCount, DefinedLoadCount).
#define VX_ENGINE_CURVES(C)                                \
  C(MaxPowerRPM, Real, None, MaxPower, "RPM")              \
  C(MaxPowerPower, Qty, Power, MaxPower, "Power")          \
  C(MaxPowerFuelRate, Qty, FuelRate, MaxPower, "FuelRate") \
  C(DefinedLoadRPM, Real, None, DefinedLoad, "RPM")        \
  C(DefinedLoadPower, Qty, Power, DefinedLoad, "Power")    \
  C(DefinedLoadFuelRate, Qty, FuelRate, DefinedLoad, "FuelRate")

// The fits that the curve lookups of one prediction use, prepared at the first lookup of each
// kind (curves and units) for the later ones: the fuel-rate prediction looks the same
// curves up at every speed. Valid only while the engine's points, counts and units stay as
// they are.
struct EngineCurveLists {
  struct Entry {
    const void* lookup;
    int xUnit, yUnit;
    CurveFitTable fit;  // of the lists read in xUnit and yUnit
    bool prepared;      // false when the fit could not be set up
  };
  std::vector<Entry> entries;
  // The engine check has passed without a box or a question: with the engine unchanged it
  // would pass so again.
  bool checked = false;
};

class clsVXEngine : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "propulsion/engine_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "propulsion/engine_fields.def"

#define VX_ENGINE_ENUM(N, ...) N,
  enum class Curve { VX_ENGINE_CURVES(VX_ENGINE_ENUM) Count };
#undef VX_ENGINE_ENUM
  static constexpr int kCurveCount = static_cast<int>(Curve::Count);

  // One point list: its unit family, the object and list tags of the file block, and the
  // count field of its curve.
  struct CurveDesc {
    Curve id;
    const char* name;
    UnitFamily family;
    const char* object;
    const char* tag;
    Field count;
  };
  static std::span<const CurveDesc> Curves();

  explicit clsVXEngine(std::shared_ptr<clsVXUnits> units = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units) { Units(std::move(units)); }
  std::shared_ptr<clsVXEngine> CopyClass() const;
  void ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits) override;
  // Numbers and points to 0, texts empty.
  void ClearAllData() override;

  // Point i (0 to kEngineCurvePoints - 1; beyond is a run-time fault) of a list, in `unit`
  // of the list's family (ignored for RPM).
  double CurveValue(Curve c, int i, int unit = kCurrent) const;
  void CurveValue(Curve c, int i, int unit, double value);
  std::string CurveValueFormatted(Curve c, int i, int unit = kCurrent) const;
  // The points of a list that the count of its curve makes meaningful.
  std::vector<double> CurveArray(Curve c, int unit = kCurrent) const;
  // The count of a list's curve, held to 0..kEngineCurvePoints.
  int CurveCount(Curve c) const;

#define VX_ENGINE_ACC_Real(N)                                                        \
  double N(int i) const { return CurveValue(Curve::N, i); }                          \
  void N(int i, double value) { CurveValue(Curve::N, i, kCurrent, value); }          \
  std::string N##Formatted(int i) const { return CurveValueFormatted(Curve::N, i); } \
  std::vector<double> N##Array() const { return CurveArray(Curve::N); }
#define VX_ENGINE_ACC_Qty(N)                                                                         \
  double N(int i, int unit) const { return CurveValue(Curve::N, i, unit); }                          \
  void N(int i, int unit, double value) { CurveValue(Curve::N, i, unit, value); }                    \
  std::string N##Formatted(int i, int unit) const { return CurveValueFormatted(Curve::N, i, unit); } \
  std::vector<double> N##Array(int unit = kCurrent) const { return CurveArray(Curve::N, unit); }
#define VX_ENGINE_ACC(N, KIND, ...) VX_ENGINE_ACC_##KIND(N)
  VX_ENGINE_CURVES(VX_ENGINE_ACC)
#undef VX_ENGINE_ACC
#undef VX_ENGINE_ACC_Real
#undef VX_ENGINE_ACC_Qty

  // Power of the maximum-power curve less the parasitic load.
  double MaxPowerNetPower(int i, int unit) const;
  std::vector<double> NetMaxPowerPowerLessParasiticArray(int unit = kCurrent) const;

  // Lookups through the curve points by CurveFit (linear on the maximum-power curve, cubic
  // spline on the defined-load curve). Each gives 0 when its argument is not above 0, and 0
  // with its failure text on the calculation error state when the fit fails. Powers and fuel
  // rates are in the unit named. `lists`, when given, keeps the point lists between lookups.
  double GetMaxPowerFromRPM(double rpm, int powerUnit, EngineCurveLists* lists = nullptr) const;
  double GetRPMFromMaxPower(double power, int powerUnit, EngineCurveLists* lists = nullptr) const;
  double GetNetMaxPowerFromRPM(double rpm, int powerUnit, EngineCurveLists* lists = nullptr) const;
  double GetFuelRateFromMaxPowerRPM(double rpm, int fuelUnit, EngineCurveLists* lists = nullptr) const;
  double GetRPMFromDefinedLoadPower(double power, int powerUnit, EngineCurveLists* lists = nullptr) const;
  // `powerUnit` is the unit of `power`; the fuel-rate prediction passes -1 (held).
  double GetFuelRateFromDefinedLoadPower(double power, int fuelUnit, int powerUnit = kCurrent,
                                         EngineCurveLists* lists = nullptr) const;

  // The first crossing of the defined-load curve with the maximum-power curve, both read as
  // straight segments between their points, defined-load segments outermost. True with the
  // point (power in `powerUnit`) when one is found; both outputs 0 otherwise, also when a
  // curve has fewer than two points.
  bool GetIntersectionOfMaxPowerAndDefinedLoadCurves(double& rpm, double& power, int powerUnit) const;

 private:
  std::array<std::vector<double>, kCurveCount> curves_;
};

}  // namespace velmar
