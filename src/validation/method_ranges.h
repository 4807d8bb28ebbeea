// The validity ranges of every prediction method as data: for each check id the parameter
// rows (parameter, limits, tolerances, format) and the rule letters that follow them. The
// frame in parameter_check.cpp walks these rows; nothing here computes.
#pragma once

#include <array>
#include <cstddef>

namespace velmar::validation {

// The quantities a row can compare. Names, values and default formats are in the parameter
// table of parameter_check.cpp.
enum class Param : unsigned char {
  None,
  // Speed rows, taken at the design speed.
  FN,     // CoefFroudeLength of the design row
  FV,     // CoefFroudeVolume of the design row
  FNB,    // CoefFroudeChineBeam of the design row
  FNLP,   // CoefFroudeChineLength of the design row
  FNH,    // depth Froude number V / sqrt(g H)
  SPEED,  // design speed in the current speed unit
  // Hull form.
  CVOL,
  CP,
  CB,
  CX,
  CWP,
  CVP,
  CVOLp,
  VOLB,
  VOLBp,
  LPBPX,
  LWLBWL,
  BWLT,
  BWLTasLWLBWL,  // named BWL/T, valued LWL/BWL (the UBC Series row, kept as it has always been)
  XCBLWL,
  IE,
  ATRAX,
  BTRBWL,
  TTRT,
  ABTAX,
  CPCWP,
  APVOL,
  XCGLP,
  LPAP,
  XCGBPX,
  Deadrise,
  Lambda,
  VOLBL2,
  // Seas and shallow water.
  HSLWL,
  HSBPX,
  AXRH,
  AXH,
  HT,
  LWLH,
  WaveAngle,  // SeasWaveAngleOffBowDeg
  HSSqrtL,    // significant wave height over sqrt(LWL / 100), metres
  Count
};

// A limit: a constant, or one computed from the vessel at check time.
enum class Lim : unsigned char {
  Const,
  MinFNC,  // min(v, FNC) in resistance mode, v in propulsion mode
  TL,      // 0.01 with an immersed transom, else 0
  FVM,     // Mercier's upper volume Froude number
  FVN,     // NPL Series: upper volume Froude number
  CVL,     // NPL Series: lower and upper CVOL
  CVH,
  FBL,  // Savitsky: lower and upper beam Froude number
  FBH,
  LM,     // Holtrop: upper lambda
  FNH,    // Holtrop: upper Froude number
  Knots,  // v knots in the current speed unit
};

struct Limit {
  Lim kind = Lim::Const;
  double v = 0.0;
  constexpr Limit() = default;
  constexpr Limit(double value) : v(value) {}  // NOLINT: a plain number is a constant limit
  constexpr Limit(Lim k, double value = 0.0) : kind(k), v(value) {}
};

// When a row stands.
enum class RowWhen : unsigned char { Always, ResistanceMode, PlaningSet, NotPlaningSet };

struct RangeRow {
  Param param = Param::None;
  Limit lower, upper;
  double lowerTolerance = 0.95, upperTolerance = 1.05;
  const char* format = nullptr;  // nullptr: the parameter's format
  bool zeroIsValue = false;
  RowWhen when = RowWhen::Always;

  constexpr RangeRow Tol(double lo, double hi) const {
    RangeRow r = *this;
    r.lowerTolerance = lo;
    r.upperTolerance = hi;
    return r;
  }
  constexpr RangeRow Fmt(const char* f) const {
    RangeRow r = *this;
    r.format = f;
    return r;
  }
  constexpr RangeRow Z() const {
    RangeRow r = *this;
    r.zeroIsValue = true;
    return r;
  }
  constexpr RangeRow When(RowWhen w) const {
    RangeRow r = *this;
    r.when = w;
    return r;
  }
};

// Rule letters. Those of the hull methods first, then those of the appendage, environment
// and interaction methods, then the set-ups that fix a status without a test.
enum class Rule : unsigned char {
  None,
  b,
  b0,
  B,
  V,
  K,
  X,
  O,
  G,
  E,
  N,
  N1,
  S,
  R,
  R2,
  C2,
  C3,
  W,
  D,
  T,
  A,    // MethodStatus 2 when ATR/AX < arg
  ALe,  // MethodStatus 2 when ATR/AX <= arg
  I,
  L,
  Y,
  J,
  P,
  Q,
  U,
  Holtrop,  // Holtrop's own rules (full evaluation only)
  Pd,
  Sh,
  Pl,
  Tw,
  Np,
  Nq,
  Up,
  Tr,
  Kb,
  Sp,
  Sd,
  Hs,
  Hd,
  DSimpleDefinition,     // D(items) when AppendageDefinition is Simple
  NoTransomArea,         // ATR/AX not > 0: the data set had an immersed transom
  NoTransomStern,        // AreaSectAtTr not > 0: the data set had transom sterns
  WaterjetOnly,          // PropulsorCalcType other than waterjet fails
  Note,                  // writes its text
  DefinitionPercentage,  // ParameterStatus from AppendageDefinition, for each kind of method
  DefinitionSimple,
  DefinitionComponent,
  ParameterUncertain,  // ParameterStatus 1
  MethodUncertain,     // MethodStatus 1
  Wa,                  // windage areas (transverse, profile) not > 0: MethodStatus 3
  Wl,                  // length overall not > 0: MethodStatus 3
  Bn,                  // Beaufort number not > 0: MethodStatus 3
};

// Items of D(...): each must be positive. The transom items are asked for only when the
// transom is immersed.
enum DItem : unsigned {
  kDCX = 1u << 0,
  kDIE = 1u << 1,
  kDCWP = 1u << 2,
  kDTransomBTR = 1u << 3,
  kDTransomTTR = 1u << 4,
  kDXCG = 1u << 5,
  kDAP = 1u << 6,
  kDLP = 1u << 7,
};

struct RuleRef {
  Rule rule = Rule::None;
  double arg = 0.0;            // A, ALe: the ATR/AX bound
  unsigned items = 0;          // D: DItem bits
  const char* text = nullptr;  // Note: the note
};

inline constexpr size_t kMaxRangeRows = 11;
inline constexpr size_t kMaxRules = 6;

struct MethodRange {
  int checkId;
  const char* name;  // for reading the table; the lists show their own labels
  std::array<RangeRow, kMaxRangeRows> rows;
  std::array<RuleRef, kMaxRules> rules;
  // The rules form a chain that ends at the first rule that fires (appendage, seas and
  // shallow-water methods); otherwise every rule runs and later ones overwrite.
  bool chain = false;
};

inline constexpr int kLastCheckId = 77;

// The ranges of a check id from 0 to kLastCheckId; nullptr for any other id.
const MethodRange* FindMethodRange(int checkId);

// The speed rows: a table whose first row is one of these has a speed row.
constexpr bool IsSpeedParam(Param p) {
  return p == Param::FN || p == Param::FV || p == Param::FNB || p == Param::FNLP || p == Param::FNH ||
         p == Param::SPEED;
}

}  // namespace velmar::validation
