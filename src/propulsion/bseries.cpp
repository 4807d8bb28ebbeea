// The Wageningen B-screw series in the regression of Oosterveld, M.W.C. and van Oossanen, P.
// (1975) "Further computer-analyzed data of the Wageningen B-screw series", International
// Shipbuilding Progress 22(251), Table 1 as reproduced by Bernitsas, Ray and Kinley (1981),
// University of Michigan NA&ME Report 237. The polynomials hold at Rn = 2e6; their own
// Reynolds correction is not applied here, a scale effect goes through the scale correction.
#include "propulsion/bseries.h"

#include <cmath>
#include <iterator>
#include <span>

namespace velmar {
namespace {

// clang-format off
// KT, 39 terms in the published order.
constexpr SeriesTerm kKT[] = {
    {0.00880496, 0, 0, 0, 0},
    {-0.204554, 1, 0, 0, 0},
    {0.166351, 0, 1, 0, 0},
    {0.158114, 0, 2, 0, 0},
    {-0.147581, 2, 0, 1, 0},
    {-0.481497, 1, 1, 1, 0},
    {0.415437, 0, 2, 1, 0},
    {0.0144043, 0, 0, 0, 1},
    {-0.0530054, 2, 0, 0, 1},
    {0.0143481, 0, 1, 0, 1},
    {0.0606826, 1, 1, 0, 1},
    {-0.0125894, 0, 0, 1, 1},
    {0.0109689, 1, 0, 1, 1},
    {-0.133698, 0, 3, 0, 0},
    {0.00638407, 0, 6, 0, 0},
    {-0.00132718, 2, 6, 0, 0},
    {0.168496, 3, 0, 1, 0},
    {-0.0507214, 0, 0, 2, 0},
    {0.0854559, 2, 0, 2, 0},
    {-0.0504475, 3, 0, 2, 0},
    {0.010465, 1, 6, 2, 0},
    {-0.00648272, 2, 6, 2, 0},
    {-0.00841728, 0, 3, 0, 1},
    {0.0168424, 1, 3, 0, 1},
    {-0.00102296, 3, 3, 0, 1},
    {-0.0317791, 0, 3, 1, 1},
    {0.018604, 1, 0, 2, 1},
    {-0.00410798, 0, 2, 2, 1},
    {-0.000606848, 0, 0, 0, 2},
    {-0.0049819, 1, 0, 0, 2},
    {0.0025983, 2, 0, 0, 2},
    {-0.000560528, 3, 0, 0, 2},
    {-0.00163652, 1, 2, 0, 2},
    {-0.000328787, 1, 6, 0, 2},
    {0.000116502, 2, 6, 0, 2},
    {0.000690904, 0, 0, 1, 2},
    {0.00421749, 0, 3, 1, 2},
    {0.0000565229, 3, 6, 1, 2},
    {-0.00146564, 0, 3, 2, 2},
};
// KQ, 47 terms in the published order.
constexpr SeriesTerm kKQ[] = {
    {0.00379368, 0, 0, 0, 0},
    {0.00886523, 2, 0, 0, 0},
    {-0.032241, 1, 1, 0, 0},
    {0.00344778, 0, 2, 0, 0},
    {-0.0408811, 0, 1, 1, 0},
    {-0.108009, 1, 1, 1, 0},
    {-0.0885381, 2, 1, 1, 0},
    {0.188561, 0, 2, 1, 0},
    {-0.00370871, 1, 0, 0, 1},
    {0.00513696, 0, 1, 0, 1},
    {0.0209449, 1, 1, 0, 1},
    {0.00474319, 2, 1, 0, 1},
    {-0.00723408, 2, 0, 1, 1},
    {0.00438388, 1, 1, 1, 1},
    {-0.0269403, 0, 2, 1, 1},
    {0.0558082, 3, 0, 1, 0},
    {0.0161886, 0, 3, 1, 0},
    {0.00318086, 1, 3, 1, 0},
    {0.015896, 0, 0, 2, 0},
    {0.0471729, 1, 0, 2, 0},
    {0.0196283, 3, 0, 2, 0},
    {-0.0502782, 0, 1, 2, 0},
    {-0.030055, 3, 1, 2, 0},
    {0.0417122, 2, 2, 2, 0},
    {-0.0397722, 0, 3, 2, 0},
    {-0.00350024, 0, 6, 2, 0},
    {-0.0106854, 3, 0, 0, 1},
    {0.00110903, 3, 3, 0, 1},
    {-0.000313912, 0, 6, 0, 1},
    {0.0035985, 3, 0, 1, 1},
    {-0.00142121, 0, 6, 1, 1},
    {-0.00383637, 1, 0, 2, 1},
    {0.0126803, 0, 2, 2, 1},
    {-0.00318278, 2, 3, 2, 1},
    {0.00334268, 0, 6, 2, 1},
    {-0.00183491, 1, 1, 0, 2},
    {0.000112451, 3, 2, 0, 2},
    {-0.0000297228, 3, 6, 0, 2},
    {0.000269551, 1, 0, 1, 2},
    {0.00083265, 2, 0, 1, 2},
    {0.00155334, 0, 2, 1, 2},
    {0.000302683, 0, 6, 1, 2},
    {-0.0001843, 0, 0, 2, 2},
    {-0.000425399, 0, 3, 2, 2},
    {0.0000869243, 3, 3, 2, 2},
    {-0.0004659, 0, 6, 2, 2},
    {0.0000554194, 1, 6, 2, 2},
};
// clang-format on
static_assert(std::size(kKT) == 39 && std::size(kKQ) == 47);

}  // namespace

// The RPM solution and the analysis ask for the coefficients alone, hundreds of times per
// prediction: those take the unrolled sums.
bool CalcKTBSeries(double& KT, double J, double PD, double EAR, int Z, DerivativeArray* d) {
  return FinishSeriesSum(KT, BSeriesKTSum(J, PD, EAR, Z, d));
}

bool CalcKQBSeries(double& KQ, double J, double PD, double EAR, int Z, DerivativeArray* d) {
  return FinishSeriesSum(KQ, BSeriesKQSum(J, PD, EAR, Z, d));
}

// The sizing solver asks for the derivatives as well, a few hundred times per sizing: those
// sums are unrolled too.
double BSeriesKTSum(double J, double PD, double EAR, int Z, DerivativeArray* d) {
  return d ? SeriesPolynomialSum<kKT>(J, PD, EAR, Z, *d) : SeriesPolynomialSum<kKT>(J, PD, EAR, Z);
}

double BSeriesKQSum(double J, double PD, double EAR, int Z, DerivativeArray* d) {
  return d ? SeriesPolynomialSum<kKQ>(J, PD, EAR, Z, *d) : SeriesPolynomialSum<kKQ>(J, PD, EAR, Z);
}

// Holtrop & Mennen (1982) "An approximate power prediction method", Int. Shipbuilding Progress
// 29, applying the propeller scale effect of the ITTC (1978) Performance Prediction Method to
// B-series charts with a model-scale section drag frozen at 0.003605:
//   c0.75 = 2.073 EAR D / Z,   t/c = (0.0185 - 0.00125 Z) D / c0.75,   kp = 30e-6 m,
//   dCD = (2 + 4 t/c) (0.003605 - (1.89 + 1.62 log10(c0.75 / kp))^-2.5),
//   dKT = -dCD 0.3 P/D c0.75 Z / D,   dKQ = dCD 0.25 c0.75 Z / D.
bool CalcBSeriesScaleCorrection(BSeriesScaleCorrection& r, double PD, double EAR, int Z, double D, double tc,
                                double roughness) {
  r = BSeriesScaleCorrection{};
  BSeriesSectionDrag s;
  const bool found = CalcBSeriesSectionDrag(s, EAR, Z, D, tc, roughness);
  r.chord = s.chord;
  r.tc = s.tc;
  return found && FinishBSeriesScaleCorrection(r, s, PD);
}

bool CalcBSeriesSectionDrag(BSeriesSectionDrag& s, double EAR, int Z, double D, double tc, double roughness) {
  s = BSeriesSectionDrag{};
  if (!(D > 0.0 && EAR > 0.0 && Z > 0)) return false;
  s.chord = 2.073 * EAR * D / Z;
  s.tc = tc > 0.0 ? tc : (0.0185 - 0.00125 * Z) * D / s.chord;
  const double kp = roughness > 0.0 ? roughness : 30e-6;
  const double rough = 1.89 + 1.62 * std::log10(s.chord / kp);
  if (!(rough > 0.0)) return false;
  s.dCD = (2.0 + 4.0 * s.tc) * (0.003605 - std::pow(rough, -2.5));
  s.solidity = s.chord * Z / D;
  return true;
}

bool FinishBSeriesScaleCorrection(BSeriesScaleCorrection& r, const BSeriesSectionDrag& s, double PD) {
  r.chord = s.chord;
  r.tc = s.tc;
  r.dCD = s.dCD;
  r.dKT = -r.dCD * 0.3 * PD * s.solidity;
  r.dKQ = r.dCD * 0.25 * s.solidity;
  return std::isfinite(r.dKT) && std::isfinite(r.dKQ);
}

// The Reynolds-number correction of the same regression (Oosterveld & van Oossanen 1975,
// Table 2 of Bernitsas, Ray and Kinley 1981): terms C J^a (P/D)^b (AE/A0)^c Z^d X^e with
// X = log10(Rn) - 0.301, Rn the section Reynolds number at 0.75R as a plain number. The
// regression was fitted above Rn = 2e6 and does not vanish exactly there.
namespace {
struct ReynoldsTerm {
  double c;
  int a, b, cc, d, e;
};
// clang-format off
constexpr ReynoldsTerm kDeltaKT[] = {
    {0.000353485, 0, 0, 0, 0, 0},  {-0.00333758, 2, 0, 1, 0, 0},   {-0.00478125, 1, 1, 1, 0, 0},
    {0.000257792, 2, 0, 1, 0, 2},  {0.0000643192, 2, 6, 0, 0, 1},  {-0.0000110636, 2, 6, 0, 0, 2},
    {-0.0000276305, 2, 0, 1, 1, 2}, {0.0000954, 1, 1, 1, 1, 1},    {0.0000032049, 1, 3, 1, 2, 1},
};
constexpr ReynoldsTerm kDeltaKQ[] = {
    {-0.000591412, 0, 0, 0, 0, 0}, {0.00696898, 0, 1, 0, 0, 0},    {-0.0000666654, 0, 6, 0, 1, 0},
    {0.0160818, 0, 0, 2, 0, 0},    {-0.000938091, 0, 1, 0, 0, 1},  {-0.00059593, 0, 2, 0, 0, 1},
    {0.0000782099, 0, 2, 0, 0, 2}, {0.0000052199, 2, 0, 1, 1, 1},  {-0.00000088528, 1, 1, 1, 1, 2},
    {0.0000230171, 0, 6, 0, 1, 1}, {-0.00000184341, 0, 6, 0, 1, 2}, {-0.00400252, 0, 0, 2, 0, 1},
    {0.000220915, 0, 0, 2, 0, 2},
};
// clang-format on

double ReynoldsSum(std::span<const ReynoldsTerm> terms, double J, double PD, double EAR, int Z, double X) {
  const SeriesPowers pj(J), pp(PD), pe(EAR), pz(Z), px(X);
  double sum = 0.0;
  for (const ReynoldsTerm& t : terms) sum += t.c * pj.p[t.a] * pp.p[t.b] * pe.p[t.cc] * pz.p[t.d] * px.p[t.e];
  return sum;
}
}  // namespace

bool CalcBSeriesReynoldsCorrection(double& dKT, double& dKQ, double J, double PD, double EAR, int Z,
                                   double Rn) {
  dKT = dKQ = 0.0;
  if (!(Rn > 0.0)) return false;
  const double X = std::log10(Rn) - 0.301;
  dKT = ReynoldsSum(kDeltaKT, J, PD, EAR, Z, X);
  dKQ = ReynoldsSum(kDeltaKQ, J, PD, EAR, Z, X);
  return std::isfinite(dKT) && std::isfinite(dKQ);
}

}  // namespace velmar
