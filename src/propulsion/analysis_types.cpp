// Towing, fixed engine RPM, acceleration and defined analyses. Each sets the rate of the
// propulsor at every speed by its own rule and then writes the row exactly as the free run
// does (the propeller analysis, or the waterjet's columns); the difference between the
// delivered thrust of all propulsors and the total drag is the net force that the rule
// leaves over. A controllable-pitch propeller works at its mean pitch here.
#include "propulsion/analysis_types.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/constants.h"
#include "core/diagnostics.h"
#include "propulsion/propeller_analysis.h"
#include "propulsion/propulsion_driver.h"
#include "propulsion/waterjet_analysis.h"

namespace velmar {
namespace {

constexpr int kWaterjetData = 3;
constexpr int kCPP = 1;

bool Fail(const char* text) {
  AddCalcError(text);
  return false;
}

template <class Object>
bool PassErrors(Object& object) {
  if (!object.ErrorsFound()) return false;
  AddCalcErrors(object.Errors());
  return true;
}

// What the propulsor meets at one speed: a row of the table, or a speed between two rows
// with every input interpolated linearly in speed.
struct Flow {
  double V = 0.0, w = 0.0, t = 0.0, etaR = 1.0, R = 0.0;
  double Va() const { return (1.0 - w) * V; }
};

Flow Between(const Flow& a, const Flow& b, double V) {
  const double f = b.V == a.V ? 0.0 : (V - a.V) / (b.V - a.V);
  auto lerp = [f](double x, double y) { return x + f * (y - x); };
  return {V, lerp(a.w, b.w), lerp(a.t, b.t), lerp(a.etaR, b.etaR), lerp(a.R, b.R)};
}

// The propulsor, the drive train and the vessel of one analysis run.
class Run {
 public:
  Run(clsVXWaterProperties& water, clsVXHull& hull, clsVXPropulsion& propulsion, clsVXPropeller& propeller,
      clsVXPropellerSeries& series, clsVXWaterjet& waterjet, clsVXEngine& engine, clsVXSpeedPerformance& sp)
      : water_(water),
        hull_(hull),
        propulsion_(propulsion),
        propeller_(propeller),
        series_(series),
        waterjet_(waterjet),
        engine_(engine),
        sp_(sp) {}

  // Hulls, weight, propulsors, drive train and propulsor data; the errors of an object end
  // the run with its text. `fullPower`: the engine's maximum-power curve is needed.
  bool Begin(bool fullPower) {
    hullCount_ = hull_.HullConfigType() == 0 ? 1 : 2;
    displacementLb_ = hull_.Displacement(kLb);
    if (PassErrors(hull_)) return false;
    calcType_ = propulsion_.PropulsorCalcType();
    propulsors_ = std::max(propulsion_.PropulsorCountPerHull(), 1) * hullCount_;
    gearRatio_ = propulsion_.GearRatio();
    const double gearEff = propulsion_.GearEfficiency(), shaftEff = propulsion_.ShaftEfficiency();
    if (PassErrors(propulsion_)) return false;
    // Drive-train values that are not positive count as 1, as in the propeller analysis.
    if (!(gearRatio_ > 0.0)) gearRatio_ = 1.0;
    losses_ = (gearEff > 0.0 ? gearEff : 1.0) * (shaftEff > 0.0 ? shaftEff : 1.0);
    rho_ = water_.Density(kSlugPerFt3);
    if (PassErrors(water_)) return false;
    if (calcType_ == kWaterjetData) {
      if (!(WaterjetRPMForPower(waterjet_, 0.0, 1.0) > 0.0)) return Fail("Waterjet impeller RPM data");
    } else {
      D_ = propeller_.Diameter(kFt);
      pitch_ = propeller_.PitchMean(kFt);
      EAR_ = propeller_.ExpAreaRatio();
      const int Z = propeller_.BladeCount();
      if (PassErrors(propeller_)) return false;
      const auto limits = GetPropellerSeriesLimits(series_.Series(), Z);
      if (!limits) return Fail("Propeller series limits");
      jMax_ = limits->JMax;
    }
    if (fullPower) {
      if (propulsion_.EngineFileIndex() != 1 || engine_.Description().empty() ||
          engine_.CurveCount(clsVXEngine::Curve::MaxPowerRPM) < 2)
        return Fail("Engine maximum power curve");
      const std::vector<double> rpm = engine_.MaxPowerRPMArray();
      const double rated = engine_.MaxRatedRPM() > 0.0 ? engine_.MaxRatedRPM() : rpm.back();
      nRated_ = rated / gearRatio_ / 60.0;
    }
    return true;
  }

  Flow RowFlow(int i) const {
    sp_.SpeedIndex(i);
    Flow f{sp_.Speed(i, kFtPerSec), sp_.WakeFraction(i), sp_.ThrustDeduction(i), sp_.RelRotEfficiency(i),
           sp_.DragTotal(i, kLbf)};
    if (f.w > 1.0) f.w = 0.99;
    if (!(f.etaR > 0.0)) f.etaR = 1.0;
    return f;
  }

  // Thrust (lbf) and brake power (hp) of one propulsor at rate n (1/s).
  bool At(const Flow& f, double n, double& T, double& Pb) {
    if (calcType_ == kWaterjetData) {
      WaterjetPoint p;
      if (!WaterjetThrustForPower(waterjet_, f.V, WaterjetPowerForRPM(waterjet_, f.V, 60.0 * n), p))
        return false;
      T = p.thrust;
      Pb = p.power / losses_;
      return true;
    }
    double KT = 0.0, KQ = 0.0, sa = 0.0, ta = 0.0, sPeak = 0.0, tPeak = 0.0;
    if (CalcPropulsorKTKQ(KT, KQ, water_, propulsion_, propeller_, series_, n, f.Va(), D_, EAR_, 1, pitch_,
                          sa, ta, sPeak, tPeak) == 0)
      return Fail("KTKQ calculation");
    T = KT * rho_ * n * n * std::pow(D_, 4.0);
    Pb = 2.0 * Pi * KQ * rho_ * n * n * n * std::pow(D_, 5.0) / (550.0 * f.etaR) / losses_;
    return true;
  }

  // Net force on the vessel (lbf) with every propulsor at rate n.
  bool Net(const Flow& f, double n, double& F) {
    double T = 0.0, Pb = 0.0;
    if (!At(f, n, T, Pb)) return false;
    F = (1.0 - f.t) * T * propulsors_ - f.R;
    return true;
  }

  // The lowest rate a search looks at: for a propeller the one of the largest advance
  // coefficient of its series, where it gives no thrust (below it the polynomials leave their
  // data); for a waterjet a thousandth of `nMax`.
  double LowestRate(const Flow& f, double nMax) const {
    const double n = calcType_ == kWaterjetData ? 1e-3 * nMax : f.Va() / (jMax_ * D_);
    return std::min(std::max(n, 1e-3 * nMax), nMax);
  }

  // The rate at which the propulsor absorbs the engine's available power: bisection between
  // the lowest rate and the rated rate, which stands when the propulsor is too light to load
  // the engine there.
  bool FullPowerRate(const Flow& f, double& n) {
    auto excess = [&](double rate, double& g) {
      double T = 0.0, Pb = 0.0;
      if (!At(f, rate, T, Pb)) return false;
      g = Pb - EngineAvailablePower(engine_, 60.0 * rate * gearRatio_);
      return true;
    };
    return Bisect(excess, LowestRate(f, nRated_), nRated_, n);
  }

  // The rate at which the thrust carries the drag, at most `nMax`.
  bool SteadyRate(const Flow& f, double nMax, double& n) {
    auto excess = [&](double rate, double& g) { return Net(f, rate, g); };
    return Bisect(excess, LowestRate(f, nMax), nMax, n);
  }

  // Writes row i for the propulsor at rate n, and the transport factor.
  bool Write(int i, double n) {
    const Flow f = RowFlow(i);
    if (calcType_ == kWaterjetData) {
      WaterjetPoint p;
      if (!WaterjetThrustForPower(waterjet_, f.V, WaterjetPowerForRPM(waterjet_, f.V, 60.0 * n), p) ||
          !CalcWaterjetAnalysis(hullCount_, propulsion_, waterjet_, sp_, i, p))
        return Fail("calculating waterjet analysis");
    } else {
      if (!CalcPropellerAnalysis(hullCount_, water_, propulsion_, propeller_, series_, sp_, i, 60.0 * n,
                                 f.Va(), pitch_))
        return Fail("calculating propeller analysis");
      // Delivered thrust and net force of every propulsor of the vessel.
      const double Td = (1.0 - f.t) * sp_.PropulsorThrust(i, kLbf) * propulsors_;
      sp_.TotalDeliveredThrust(i, kLbf, Td);
      sp_.TotalNetTowpull(i, kLbf, Td - f.R);
      if (propeller_.PropellerType() == kCPP) sp_.CPMeanPitch(i, kFt, pitch_);
    }
    const double Pb = sp_.PowerBrakeTotal(i, kHp);
    sp_.TransportFactor(i, Pb > 0.0 ? displacementLb_ * f.V / (550.0 * Pb) : 0.0);
    return true;
  }

  clsVXSpeedPerformance& sp() { return sp_; }
  clsVXPropulsion& propulsion() { return propulsion_; }
  double gearRatio() const { return gearRatio_; }
  double nRated() const { return nRated_; }
  double displacementLb() const { return displacementLb_; }

 private:
  // Bisection of g(x) = 0 on [lo, hi] with g(lo) < 0: the upper end when g(hi) <= 0, the
  // lower end when g(lo) >= 0.
  template <class G>
  bool Bisect(G g, double lo, double hi, double& x) {
    double glo = 0.0, ghi = 0.0;
    if (!g(hi, ghi)) return false;
    if (ghi <= 0.0) {
      x = hi;
      return true;
    }
    if (!g(lo, glo)) return false;
    if (glo >= 0.0) {
      x = lo;
      return true;
    }
    for (int i = 0; i < 60 && hi - lo > 1e-9 * hi; ++i) {
      const double mid = 0.5 * (lo + hi);
      double gm = 0.0;
      if (!g(mid, gm)) return false;
      (gm < 0.0 ? lo : hi) = mid;
    }
    x = 0.5 * (lo + hi);
    return true;
  }

  clsVXWaterProperties& water_;
  clsVXHull& hull_;
  clsVXPropulsion& propulsion_;
  clsVXPropeller& propeller_;
  clsVXPropellerSeries& series_;
  clsVXWaterjet& waterjet_;
  clsVXEngine& engine_;
  clsVXSpeedPerformance& sp_;
  int hullCount_ = 1, propulsors_ = 1, calcType_ = 0;
  double displacementLb_ = 0.0, gearRatio_ = 1.0, losses_ = 1.0, rho_ = 0.0;
  double D_ = 0.0, pitch_ = 0.0, EAR_ = 0.0, nRated_ = 0.0, jMax_ = 1.0;
};

// The rows with a rate each from `rateOf`.
template <class RateOf>
bool EachRow(Run& run, RateOf rateOf) {
  clsVXSpeedPerformance& sp = run.sp();
  for (int i = 0; i < sp.count(); ++i) {
    const Flow f = run.RowFlow(i);
    if (PassErrors(sp)) return false;
    double n = 0.0;
    if (!rateOf(i, f, n) || !run.Write(i, n)) return false;
  }
  return true;
}

}  // namespace

double EngineAvailablePower(const clsVXEngine& engine, double engineRPM) {
  const std::vector<double> rpm = engine.MaxPowerRPMArray();
  const std::vector<double> power = engine.NetMaxPowerPowerLessParasiticArray(kHp);
  if (rpm.size() < 2 || !(engineRPM > 0.0)) return 0.0;
  if (engineRPM <= rpm.front()) return rpm.front() > 0.0 ? power.front() * engineRPM / rpm.front() : 0.0;
  for (size_t k = 1; k < rpm.size(); ++k)
    if (engineRPM <= rpm[k])
      return power[k - 1] + (engineRPM - rpm[k - 1]) * (power[k] - power[k - 1]) / (rpm[k] - rpm[k - 1]);
  return power.back();
}

bool BuildPropulsionTowingAnalysis(clsVXWaterProperties& water, clsVXHull& hull, clsVXPropulsion& propulsion,
                                   clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                                   clsVXWaterjet& waterjet, clsVXEngine& engine, clsVXSpeedPerformance& sp) {
  SetCalcLocation("Building Propulsion Towing analysis");
  Run run(water, hull, propulsion, propeller, propellerSeries, waterjet, engine, sp);
  if (!run.Begin(true)) return false;
  return EachRow(run, [&](int, const Flow& f, double& n) { return run.FullPowerRate(f, n); });
}

bool BuildPropulsionFixedRPMAnalysis(clsVXWaterProperties& water, clsVXHull& hull,
                                     clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                     clsVXPropellerSeries& propellerSeries, clsVXWaterjet& waterjet,
                                     clsVXEngine& engine, clsVXSpeedPerformance& sp) {
  SetCalcLocation("Building Propulsion Fixed Engine RPM analysis");
  Run run(water, hull, propulsion, propeller, propellerSeries, waterjet, engine, sp);
  if (!run.Begin(false)) return false;
  const double engineRPM = propulsion.FixedEngineRPM();
  if (PassErrors(propulsion)) return false;
  if (!(engineRPM > 0.0)) return Fail("Fixed engine RPM");
  const double n = engineRPM / run.gearRatio() / 60.0;
  return EachRow(run, [&](int, const Flow&, double& rate) {
    rate = n;
    return true;
  });
}

bool BuildPropulsionDefinedAnalysis(clsVXWaterProperties& water, clsVXHull& hull, clsVXPropulsion& propulsion,
                                    clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                                    clsVXWaterjet& waterjet, clsVXEngine& engine, clsVXSpeedPerformance& sp) {
  SetCalcLocation("Building Propulsion Defined analysis");
  Run run(water, hull, propulsion, propeller, propellerSeries, waterjet, engine, sp);
  if (!run.Begin(false)) return false;
  return EachRow(run, [&](int i, const Flow&, double& n) {
    n = sp.PropulsorRPM(i) / 60.0;
    return n > 0.0 || Fail("Defined propulsor RPM");
  });
}

bool BuildPropulsionAccelerationAnalysis(clsVXWaterProperties& water, clsVXHull& hull,
                                         clsVXPropulsion& propulsion, clsVXPropeller& propeller,
                                         clsVXPropellerSeries& propellerSeries, clsVXWaterjet& waterjet,
                                         clsVXEngine& engine, clsVXSpeedPerformance& sp) {
  SetCalcLocation("Building Propulsion Acceleration analysis");
  Run run(water, hull, propulsion, propeller, propellerSeries, waterjet, engine, sp);
  if (!run.Begin(true)) return false;
  double massMult = propulsion.AddedMassMult();
  const bool limited = propulsion.EngineControlEnabled() == 1 && propulsion.EngineLimitToRPMPerSec() > 0.0;
  const double rateLimit = propulsion.EngineLimitToRPMPerSec() / run.gearRatio() / 60.0;  // 1/s per s
  if (PassErrors(propulsion)) return false;
  if (!(massMult > 0.0)) massMult = 1.0;
  const double mass = run.displacementLb() / GravityFt * massMult;
  if (!(mass > 0.0)) return Fail("Displacement");

  // The rows in rising speed, and the full-power rate at each.
  const int count = sp.count();
  if (count < 1) return true;
  std::vector<Flow> rows;
  std::vector<double> fullRate;
  for (int i = 0; i < count; ++i) {
    rows.push_back(run.RowFlow(i));
    if (PassErrors(sp)) return false;
    if (i > 0 && !(rows[i].V > rows[i - 1].V)) return Fail("Acceleration needs the speeds in rising order");
    double n = 0.0;
    if (!run.FullPowerRate(rows.back(), n)) return false;
    fullRate.push_back(n);
  }
  auto flowAt = [&](double V, double& nFull) {
    size_t k = 0;
    while (k + 2 < rows.size() && V > rows[k + 1].V) ++k;
    if (rows.size() == 1) {
      nFull = fullRate[0];
      return rows[0];
    }
    const double Vc = std::clamp(V, rows.front().V, rows.back().V);
    const double f = (Vc - rows[k].V) / (rows[k + 1].V - rows[k].V);
    nFull = fullRate[k] + f * (fullRate[k + 1] - fullRate[k]);
    return Between(rows[k], rows[k + 1], Vc);
  };

  // Steady running at the first speed; then full power, the rate rising at its limit.
  double n0 = fullRate[0];
  if (limited && !run.SteadyRate(rows[0], fullRate[0], n0)) return false;
  auto state = [&](double time, double V, double& a, double& n, double& nFull) {
    const Flow f = flowAt(V, nFull);
    n = limited ? std::min(nFull, n0 + rateLimit * time) : nFull;
    double F = 0.0;
    if (!run.Net(f, n, F)) return false;
    a = F / mass;
    return true;
  };

  // Heun's method in time; a step gains about 1/500 of the speed range, or, while the rate
  // is held by its limit, 1/500 of the full-power rate.
  std::vector<double> timeAt(count, 0.0), distanceAt(count, 0.0), rateAt(count, 0.0);
  std::vector<bool> reached(count, false);
  double time = 0.0, distance = 0.0, V = rows[0].V;
  reached[0] = true;
  rateAt[0] = limited ? n0 : fullRate[0];
  const double dV = std::max(rows.back().V - rows[0].V, 1e-3) / 500.0;
  // A speed where the full-power thrust does not exceed the drag is not reached, nor any
  // above it: the vessel tends to its top speed below it.
  int reachable = 1;
  for (double F = 1.0; reachable < count; ++reachable) {
    if (!run.Net(rows[reachable], fullRate[reachable], F)) return false;
    if (!(F > 0.0)) break;
  }
  int next = 1;
  for (int step = 0; next < reachable && step < 100000; ++step) {
    double a1 = 0.0, n1 = 0.0, nFull = 0.0;
    if (!state(time, V, a1, n1, nFull)) return false;
    const bool rising = limited && n1 < nFull;
    if (a1 <= 0.0 && !rising) break;  // no force left: the next speed is not reached
    double dt = a1 > 0.0 ? dV / a1 : 1e9;
    if (rising) dt = std::min(dt, nFull / (500.0 * rateLimit));
    double a2 = 0.0, n2 = 0.0, nFull2 = 0.0;
    if (!state(time + dt, V + a1 * dt, a2, n2, nFull2)) return false;
    const double Vn = V + 0.5 * (a1 + a2) * dt;
    const double sn = distance + 0.5 * (V + Vn) * dt;
    while (next < count && Vn >= rows[next].V) {
      const double f = (rows[next].V - V) / (Vn - V);
      timeAt[next] = time + f * dt;
      distanceAt[next] = distance + f * (sn - distance);
      double nf = 0.0;
      flowAt(rows[next].V, nf);
      rateAt[next] = limited ? std::min(nf, n0 + rateLimit * timeAt[next]) : nf;
      reached[next++] = true;
    }
    time += dt;
    distance = sn;
    V = Vn;
  }

  // The rows: the propulsor at the rate of the moment the speed is passed; a speed not
  // reached shows the full-power state with no time and distance.
  for (int i = 0; i < count; ++i) {
    const double n = reached[i] ? rateAt[i] : fullRate[i];
    double F = 0.0;
    if (!run.Net(rows[i], n, F) || !run.Write(i, n)) return false;
    sp.AccelGravities(i, F / mass / GravityFt);
    sp.AccelTimeSecs(i, reached[i] ? timeAt[i] : 0.0);
    sp.AccelDistance(i, kFt, reached[i] ? distanceAt[i] : 0.0);
  }
  return true;
}

}  // namespace velmar
