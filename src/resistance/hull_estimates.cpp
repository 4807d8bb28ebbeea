// Standard estimates of hull parameters, and the lists of proposals of the estimate window.
// lcb below is the centre of buoyancy in percent of LWL forward of mid-length.
#include "resistance/hull_estimates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "core/format.h"
#include "core/helpers.h"
#include "resistance/ittc78.h"

namespace velmar {
namespace {

// Shows `text` as the progress text while an estimate runs and puts the caller's text back
// afterwards, unless the estimate has left an error to be reported under its own text.
class ProgressText {
 public:
  explicit ProgressText(const char* text) : saved_(SaveCalcLocation()) { SetCalcLocation(text); }
  ~ProgressText() {
    if (!CalcErrorFoundFlag()) RestoreCalcLocation(saved_);
  }
  ProgressText(const ProgressText&) = delete;
  ProgressText& operator=(const ProgressText&) = delete;

 private:
  SavedCalcLocation saved_;
};

double Lcb(double lcbLwlRatio) { return (lcbLwlRatio - 0.5) * 100.0; }

// This system's addition to Holtrop's length of run for very full hulls.
double FullnessTerm(double cp) { return cp > 0.9 ? (cp - 0.9) * 0.4 : 0.0; }

}  // namespace

void HandOverHullErrors(clsVXHull& hull) { AddCalcErrors(hull.Errors()); }

// Length of run, Holtrop & Mennen (1982): LR/L = 1 - CP + 0.06 CP lcb / (4 CP - 1), plus the
// fullness term.
bool CalcHoltropLengthOfRun(double& lrRatio, HullReads& reads) {
  ProgressText progress("Holtrop length of run");
  lrRatio = 0.0;
  const double cp = reads.CoefPrismatic();
  const double lcb = Lcb(reads.CoefLCBLwlRatio());
  if (PassHullErrors(reads.Hull())) return false;
  if (4.0 * cp - 1.0 == 0.0) return true;
  lrRatio = 1.0 - cp + FullnessTerm(cp) + 0.06 * cp * lcb / (4.0 * cp - 1.0);
  return true;
}

bool CalcHoltropLengthOfRun(double& lrRatio, const clsVXHull& hull) {
  HullReads reads(hull);
  return CalcHoltropLengthOfRun(lrRatio, reads);
}

// Form factor 1 + k1, Holtrop (1984), with c14 = 1 + 0.011 Cstern.
bool CalcHoltropFormFactor(double& k1, HullReads& reads) {
  ProgressText progress("Holtrop form factor");
  k1 = 1.0;
  const clsVXHull& hull = reads.Hull();
  const double s = hull.CalcHoltropSternCoef();
  const double len = reads.LengthWL(kM), vol = reads.DisplacementVolume(kM);
  const double cp = reads.CoefPrismatic(), lt = reads.CoefLwlTvolRatio(), lb = reads.CoefLwlBwlRatio();
  if (PassHullErrors(hull)) return false;
  const double bl = lb > 0.0 ? 1.0 / lb : 0.0, tl = lt > 0.0 ? 1.0 / lt : 0.0;
  if (!(cp > 0.0 && bl > 0.0 && tl > 0.0 && len > 0.0 && vol > 0.0)) return true;
  double lr = 0.0;
  if (!CalcHoltropLengthOfRun(lr, reads)) return false;
  const double run = 1.0 - cp + FullnessTerm(cp);
  if (!(lr > 0.0) || !(run > 0.0)) return true;
  const double c14 = 1.0 + 0.011 * s;
  k1 = 0.93 + 0.487118 * c14 * std::pow(bl, 1.06806) * std::pow(tl, 0.46106) * std::pow(1.0 / lr, 0.121563) *
                  std::pow(len * len * len / vol, 0.36486) * std::pow(run, -0.604247);
  return true;
}

bool CalcHoltropFormFactor(double& k1, const clsVXHull& hull) {
  HullReads reads(hull);
  return CalcHoltropFormFactor(k1, reads);
}

// Half angle of entrance, Holtrop (1984):
//   iE = 1 + 89 exp{-(L/B)^0.80856 (1 - CWP)^0.30484 (1 - CP - 0.0225 lcb)^0.6367
//                   (LR/B)^0.34574 (100 Vol / L^3)^0.16302},
// LR without the fullness term. Outside the regression's domain the result is 0.
bool CalcHoltropHalfEntranceAngle(double& angleDeg, const clsVXHull& hull) {
  angleDeg = 0.0;
  const double lcbRatio = hull.CoefLCBLwlRatio(), lvol = hull.CoefLwlVol(), cwp = hull.CoefWaterplane();
  const double lb = hull.CoefLwlBwlRatio(), cp = hull.CoefPrismatic();
  if (PassHullErrors(hull)) return false;
  if (!(lcbRatio > 0.0 && lvol > 0.0 && cwp > 0.0 && lb > 0.0 && cp > 0.25 && cwp < 1.0)) return true;
  const double lcb = (lcbRatio - 0.5) * 100.0;
  const double v = 100.0 / (lvol * lvol * lvol);
  const double lr = 1.0 - cp + 0.06 * cp * lcb / (4.0 * cp - 1.0);
  const double fore = 1.0 - cp - 0.0225 * lcb;
  if (!(lr > 0.0 && fore > 0.0)) return true;
  angleDeg =
      1.0 + 89.0 * std::exp(-std::pow(lb, 0.80856) * std::pow(1.0 - cwp, 0.30484) * std::pow(fore, 0.6367) *
                            std::pow(lr * lb, 0.34574) * std::pow(v, 0.16302));
  return true;
}

// Correlation allowance in the later Holtrop form (constants 0.00546 and 0.002 where Holtrop &
// Mennen (1982) have 0.006 and 0.00205):
//   CA = 0.00546 (L + 100)^-0.16 - 0.002 + 0.003 sqrt(L / 7.5) CB^4 c2 (0.04 - c4),
// c2 the bulb factor of the wave resistance, c4 = min(T/L, 0.04). Lengths in metres.
bool CalcHoltropCorrelationAllowance(double& ca, const clsVXHull& hull) {
  ProgressText progress("Holtrop correlation allowance");
  ca = 0.0;
  const double len = hull.LengthWL(kM), b = hull.BeamWLMax(kM), t = hull.DraftSubmergedMax(kM);
  const double z = hull.ZBulbAreaSectBelowWL(kM), abt = hull.BulbAreaSect(kM2), cb = hull.CoefBlock();
  if (PassHullErrors(hull)) return false;
  if (!(len > 0.0 && b > 0.0 && t > 0.0 && cb > 0.0)) return true;
  const double c3 =
      abt > 0.0 && z > 0.0 ? 0.56 * std::pow(abt, 1.5) / (b * t * (0.31 * std::sqrt(abt) + z)) : 0.0;
  const double c2 = std::exp(-1.89 * std::sqrt(c3));
  const double c4 = std::min(t / len, 0.04);
  ca = std::pow(len + 100.0, -0.16) * 0.00546 - 0.002 +
       0.003 * std::sqrt(len / 7.5) * std::pow(cb, 4) * c2 * (0.04 - c4);
  return true;
}

// Kostov's regression of the form factor in L/B, B/T and lcb.
bool CalcKostovFormFactor(double& k1, const clsVXHull& hull) {
  ProgressText progress("Kostov form factor");
  k1 = 0.0;
  const double lb = hull.CoefLwlBwlRatio(), bt = hull.CoefBwlTvolRatio(), lcb = Lcb(hull.CoefLCBLwlRatio());
  if (PassHullErrors(hull)) return false;
  if (!(lb > 0.0 && bt > 0.0)) return true;
  k1 = 0.06021 * lb + 0.436512 + 0.14681 * bt + 0.47704 * lcb - 0.047266 * lb * lcb - 0.062142 * bt * lcb;
  return true;
}

// Form factor of the BSRA series: 2.4806 CB^0.1526 (B/T)^0.0533 (B/L)^0.3856.
bool CalcBSRAFormFactor(double& k1, const clsVXHull& hull) {
  ProgressText progress("BSRA Series form factor");
  k1 = 0.0;
  const double cb = hull.CoefBlock(), lb = hull.CoefLwlBwlRatio(), bt = hull.CoefBwlTvolRatio();
  if (cb > 0.0 && lb > 0.0 && bt > 0.0)
    k1 = 2.4806 * std::pow(cb, 0.1526) * std::pow(bt, 0.0533) * std::pow(1.0 / lb, 0.3856);
  return true;
}

// Form factor of the Hamburg EWB series, in b = B/L and t = T/L.
bool CalcHamburgEWBFormFactor(double& k1, const clsVXHull& hull) {
  ProgressText progress("HamburgEWB form factor");
  k1 = 0.0;
  const double cb = hull.CoefBlock(), lb = hull.CoefLwlBwlRatio(), lt = hull.CoefLwlTvolRatio();
  const double cp = hull.CoefPrismatic();
  if (!(cb > 0.0 && lb > 0.0)) return true;
  const double b = 1.0 / lb, t = lt > 0.0 ? 1.0 / lt : 0.0;
  k1 = (20.6 * b * t - 246.4 * b * t * t - 54.95 * b * b * t + 1897.0 * (b * t) * (b * t)) * cp / 0.77 + 1.0;
  return true;
}

// Diameter of the circle of the maximum section's area, in the current length unit.
bool CalcHullCanoeDiameter(double& diameter, const clsVXHull& hull) {
  ProgressText progress("hull canoe diameter");
  diameter = 0.0;
  const double b = hull.BeamWLMax(kCurrent), t = hull.DraftSubmergedMax(kCurrent),
               cx = hull.CoefAreaSectMax();
  if (b > 0.0 && t > 0.0 && cx > 0.0) diameter = std::sqrt(8.0 * b * t * cx / Pi);
  return true;
}

// ---- Estimate lists -----------------------------------------------------------------------

namespace {

struct Context {
  const clsVXHull& hull;  // a copy of the user's hull: its reads leave the user's stack alone
  double designFn;
};

// A proposal's rule: a value in the item's current unit, none when inputs are missing.
using Rule = std::optional<double> (*)(const Context&);
constexpr int kNoCheck = -2;
struct Proposal {
  const char* label;
  Rule rule;               // nullptr: no published rule is carried, the row stays empty
  int checkId = kNoCheck;  // the check of the data set the proposal comes from
};

std::optional<double> Positive(double v) {
  return v > 0.0 && std::isfinite(v) ? std::optional<double>(v) : std::nullopt;
}
// The result of a Calc... estimate, none when it failed or gave its guarded value. (Call the
// estimate before this: argument evaluation order is unspecified.)
std::optional<double> Produced(bool ok, double v, double guarded) {
  return ok && v != guarded && std::isfinite(v) ? std::optional<double>(v) : std::nullopt;
}
double AreaFromM2(const clsVXHull& h, double m2) { return h.Units()->ConvertUnitArea(m2, kCurrent, kM2); }

// Waterplane area from CWP = a CP + b.
template <int A1000, int B1000>
std::optional<double> WaterplaneFromCp(const Context& c) {
  const double cp = c.hull.CoefPrismatic();
  if (!(cp > 0.0)) return std::nullopt;
  return Positive(c.hull.GetWaterplaneAreaFromCw(A1000 / 1000.0 * cp + B1000 / 1000.0));
}

// Position (0.5 + offset) LWL forward of the transom; offset in per mille of LWL.
template <int Offset1000>
std::optional<double> FromMidLength(const Context& c) {
  const double len = c.hull.LengthWL(kCurrent);
  return len > 0.0 ? std::optional<double>((0.5 + Offset1000 / 1000.0) * len) : std::nullopt;
}

// clang-format off
constexpr Proposal kHalfEntranceAngle[] = {
    {"Holtrop (1982)", [](const Context& c) {
       double v = 0.0;
       const bool ok = CalcHoltropHalfEntranceAngle(v, c.hull);
       return Produced(ok, v, 0.0);
     }, 0},
    {"Fung (HSTS)", nullptr, 1},
    {"Fung (CRTS)", nullptr, 2},
};

constexpr Proposal kWaterplaneArea[] = {
    {"Series 60", WaterplaneFromCp<860, 180>, 20},
    {"Webb small ship", WaterplaneFromCp<810, 260>, 38},
    {"Webb cargo ship", WaterplaneFromCp<880, 170>, 39},
    {"Webb twin-screw", WaterplaneFromCp<750, 270>, 40},
    {"Doust trawler", [](const Context& c) {
       const double cb = c.hull.CoefBlock();
       if (!(cb > 0.0)) return std::optional<double>();
       return Positive(c.hull.GetWaterplaneAreaFromCw(0.967059 * std::pow(cb, 0.52085)));
     }, 41},
};

constexpr Proposal kLongitudinalCentre[] = {
    {"6% aft of mid-LWL", FromMidLength<-60>}, {"4% aft of mid-LWL", FromMidLength<-40>},
    {"2% aft of mid-LWL", FromMidLength<-20>}, {"Mid-LWL", FromMidLength<0>},
    {"2% fwd of mid-LWL", FromMidLength<20>},  {"4% fwd of mid-LWL", FromMidLength<40>},
    {"6% fwd of mid-LWL", FromMidLength<60>},
};

constexpr Proposal kCentreOfWaterplane[] = {{"Average", nullptr}};

constexpr Proposal kMaxSectionArea[] = {
    // Jensen (1994) for modern ship forms, as given by Schneekluth & Bertram (1998), Ship
    // Design for Efficiency and Economy: CM = 1 / (1 + (1 - CB)^3.5).
    {"Typical large ship", [](const Context& c) {
       const double cb = c.hull.CoefBlock();
       if (!(cb > 0.0 && cb < 1.0)) return std::optional<double>();
       return Positive(c.hull.GetMaxSectionAreaFromCx(1.0 / (1.0 + std::pow(1.0 - cb, 3.5))));
     }},
    {"Design lane [FN]", nullptr},
};

constexpr Proposal kWettedSurface[] = {
    // Denny-Mumford: S = 1.7 L T + Vol / T (metres).
    {"Denny", [](const Context& c) {
       const double len = c.hull.LengthWL(kM), t = c.hull.DraftSubmergedMax(kM), vol = c.hull.DisplacementVolume(kM);
       if (!(len > 0.0 && t > 0.0 && vol > 0.0)) return std::optional<double>();
       return Positive(AreaFromM2(c.hull, 1.7 * len * t + vol / t));
     }},
    {"Swift", nullptr, 22}, {"MARAD", nullptr, 16}, {"BSRA Series (Full)", nullptr, 4}, {"Series 60", nullptr, 20},
    // Holtrop & Mennen (1982): S = L (2T + B) sqrt(CM) (0.453 + 0.4425 CB - 0.2862 CM
    //   - 0.003467 B/T + 0.3696 CWP) + 2.38 ABT / CB.
    {"Holtrop", [](const Context& c) {
       const clsVXHull& h = c.hull;
       const double len = h.LengthWL(kM), b = h.BeamWLMax(kM), t = h.DraftSubmergedMax(kM), abt = h.BulbAreaSect(kM2);
       const double cm = h.CoefAreaSectMax(), cb = h.CoefBlock(), cwp = h.CoefWaterplane();
       if (!(len > 0.0 && b > 0.0 && t > 0.0 && cm > 0.0 && cb > 0.0 && cwp > 0.0)) return std::optional<double>();
       const double s = len * (2.0 * t + b) * std::sqrt(cm) *
                            (0.453 + 0.4425 * cb - 0.2862 * cm - 0.003467 * b / t + 0.3696 * cwp) +
                        2.38 * std::max(abt, 0.0) / cb;
       return Positive(AreaFromM2(h, s));
     }, 0},
    {"DeGroot RB", nullptr, 7}, {"Delft 1", nullptr, 9}, {"Delft 23", nullptr, 13}, {"Hamburg EWB Series", nullptr, 14},
    {"Jin 1980", nullptr, 26}, {"Mercier", nullptr, 17}, {"NTUA Series", nullptr, 18}, {"Oortmersen", nullptr, 19},
    {"SSPA cargo", nullptr, 21},
};

constexpr Proposal kCorrelationAllowance[] = {
    // ITTC-1978 roughness allowance (Bowden & Davison 1974) at the standard hull roughness
    // ks = 150e-6 m: CA = (105 (ks / L)^(1/3) - 0.64) 1e-3.
    {"Basic", [](const Context& c) {
       const double len = c.hull.LengthWL(kM);
       if (!(len > 0.0)) return std::optional<double>();
       return std::optional<double>((105.0 * std::cbrt(150e-6 / len) - 0.64) * 1e-3);
     }},
    {"Keller", nullptr}, {"Guldhammer", nullptr}, {"NavSea", nullptr, 28},
    {"Holtrop", [](const Context& c) {
       double v = 0.0;
       const bool ok = CalcHoltropCorrelationAllowance(v, c.hull);
       return Produced(ok, v, 0.0);
     }, 0},
    {"Planing [minimum]", nullptr},
    // The ATTC (1947) standard allowance 0.0004, used for planing hulls by Savitsky (1964).
    {"Planing [typical]", [](const Context&) { return std::optional<double>(0.0004); }},
};

constexpr Proposal kFormFactor[] = {
    {"Scaled to model", nullptr},
    {"Holtrop [ITTC57]", [](const Context& c) {
       double v = 1.0;
       const bool ok = CalcHoltropFormFactor(v, c.hull);
       return Produced(ok, v, 1.0);
     }, 0},
    {"MARIN [Grigson]", nullptr},
    {"Kostov", [](const Context& c) {
       double v = 0.0;
       const bool ok = CalcKostovFormFactor(v, c.hull);
       return Produced(ok, v, 0.0);
     }, 3},
    {"Hamburg EWB Series", [](const Context& c) {
       double v = 0.0;
       const bool ok = CalcHamburgEWBFormFactor(v, c.hull);
       return Produced(ok, v, 0.0);
     }, 14},
    {"BSRA Series", [](const Context& c) {
       double v = 0.0;
       const bool ok = CalcBSRAFormFactor(v, c.hull);
       return Produced(ok, v, 0.0);
     }, 4},
    // Granville (1956): k = 18.7 (CB B/L)^2.
    {"Granville", [](const Context& c) {
       const double cb = c.hull.CoefBlock(), lb = c.hull.CoefLwlBwlRatio();
       if (!(cb > 0.0 && lb > 0.0)) return std::optional<double>();
       return std::optional<double>(1.0 + 18.7 * (cb / lb) * (cb / lb));
     }},
};
// clang-format on

// An item: its command-line name, the field its value belongs to (first) and other field
// names that open the same list, whether that field is one of the ITTC-78 settings, and
// its proposals.
struct ItemRow {
  EstimateItem item;
  const char* name;
  std::array<const char*, 2> fields;
  bool ofSettings;
  std::span<const Proposal> proposals;
};

const ItemRow kItems[] = {
    {EstimateItem::HalfEntranceAngle, "HalfEntranceAngle", {"AngleHalfEntDeg"}, false, kHalfEntranceAngle},
    {EstimateItem::WaterplaneArea, "WaterplaneArea", {"AreaWaterplane"}, false, kWaterplaneArea},
    {EstimateItem::LongitudinalCentre,
     "LongitudinalCentre",
     {"XBuoyancyFwdTr", "XGravityFwdTr"},
     false,
     kLongitudinalCentre},
    {EstimateItem::CentreOfWaterplane,
     "CentreOfWaterplane",
     {"XAreaWaterplaneFwdTr"},
     false,
     kCentreOfWaterplane},
    {EstimateItem::MaxSectionArea, "MaxSectionArea", {"AreaSectMax"}, false, kMaxSectionArea},
    {EstimateItem::WettedSurface, "WettedSurface", {"WettedSurface"}, false, kWettedSurface},
    {EstimateItem::CorrelationAllowance,
     "CorrelationAllowance",
     {"CorrelationAllowance"},
     true,
     kCorrelationAllowance},
    {EstimateItem::FormFactor, "FormFactor", {"HullFormFactor"}, true, kFormFactor},
};

const ItemRow& ItemRowOf(EstimateItem item) {
  return *std::find_if(std::begin(kItems), std::end(kItems),
                       [item](const ItemRow& s) { return s.item == item; });
}

// A value as text in the format of a field: its fixed format, else its family's format.
std::string TextInFormat(const DataClass& owner, const char* fieldName, double v) {
  const int field = owner.FieldIndex(fieldName);
  if (field < 0) return FormatNumber(v, "");
  const FieldDesc& d = owner.Fields()[field];
  if (*d.format || d.family == UnitFamily::None || !owner.Units()) return FormatNumber(v, d.format);
  return FormatNumber(v, owner.Units()->Format(d.family));
}

}  // namespace

bool EstimateItemFromName(const std::string& name, EstimateItem& item) {
  for (const ItemRow& s : kItems) {
    const bool field = std::any_of(s.fields.begin(), s.fields.end(),
                                   [&name](const char* f) { return f && EqualsNoCase(name, f); });
    if (EqualsNoCase(name, s.name) || field) {
      item = s.item;
      return true;
    }
  }
  return false;
}

const std::vector<std::string>& EstimateItemNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> n;
    for (const ItemRow& s : kItems) n.emplace_back(s.name);
    return n;
  }();
  return names;
}

// The estimates run on a copy of the hull, and the progress text of the caller is put back
// at the end, so opening a list changes neither the hull's error stack nor a pending cause.
std::vector<EstimateRow> EstimateList(EstimateItem item, const clsVXHull& hull,
                                      const clsVXITTC78Expansion& ittc78, double designFn) {
  const ItemRow& itemRow = ItemRowOf(item);
  const std::string location = GetCalcLocation();
  const auto copy = hull.CopyClass();
  const Context context{*copy, designFn};
  const DataClass& owner = itemRow.ofSettings ? static_cast<const DataClass&>(ittc78) : *copy;
  std::vector<EstimateRow> rows;
  for (const Proposal& p : itemRow.proposals) {
    EstimateRow row{p.label, 0.0, "", {}, {}, {}};
    if (p.checkId != kNoCheck) row.checkId = p.checkId;
    try {
      if (const auto v = p.rule ? p.rule(context) : std::nullopt) {
        row.value = *v;
        row.text = TextInFormat(owner, itemRow.fields[0], *v);
      }
    } catch (...) {
      row.value = 0.0;  // a missing link or unit: the proposal stays empty
      row.text.clear();
    }
    rows.push_back(std::move(row));
  }
  SetCalcLocation(location);
  return rows;
}

}  // namespace velmar
