// The analysis of a propeller at one speed row: coefficients, thrust, torque, powers,
// efficiencies, cavitation numbers, percent back cavitation, the recommended blade area and
// the check codes that the reports colour.
#pragma once

#include "core/speed_performance.h"
#include "core/water.h"
#include "propulsion/propeller.h"
#include "propulsion/propeller_series.h"
#include "propulsion/propulsion_settings.h"

namespace velmar {

struct SeriesModelInputs;  // propulsion/propeller_series_model.h

// What the analysis reads of the water, the settings and the propeller, read at the first row
// of a run and kept for the later ones, which still look at the objects' error stacks where the
// reads stood (a read that passed its check passes again and pushes nothing).
struct PropellerAnalysisReads {
  bool read = false;
  double rho = 0.0, nu = 0.0, gearRatio = 0.0, gearEff = 0.0, shaftEff = 0.0;
  double D = 0.0, pitchMean = 0.0, EAR = 0.0, H = 0.0;
  int calcType = 0, countPerHull = 0, cavMethod = 0, Z = 0, series = 0, propellerType = 0, analysisType = 0;
  bool seriesRead = false, typeRead = false, analysisTypeRead = false;
};

// Writes every propulsor column of row `speedIndex` for the propeller turning at `rpm`
// (1/min) with advance speed `va` (ft/s) and pitch `meanPitch` (ft; 0: the propeller's mean
// pitch). Returns false with the failure's text on the calculation error state; the columns
// written before a failure stay. `inputs`, when given, are the series model's inputs of the run.
bool CalcPropellerAnalysis(int hullCount, clsVXWaterProperties& water, clsVXPropulsion& propulsion,
                           clsVXPropeller& propeller, clsVXPropellerSeries& propellerSeries,
                           clsVXSpeedPerformance& speedPerformance, int speedIndex, double rpm, double va,
                           double meanPitch, const SeriesModelInputs* inputs = nullptr,
                           PropellerAnalysisReads* reads = nullptr);

// Percent back cavitation from a cavitation number and a thrust loading coefficient at 0.7R:
// x = sigma^(1/3) 0.87^(1/sigma) / tau; 100 below x = 0.905, 2 above x = 4.16, else
// 87.27/x^2 + 1.231 x - 8.16 (5 % at x = 3.045, 10 % at x = 2.395). 0 when tau is not positive.
double PercentBackCavitation(double sigma, double tau);

// A check code against a limit: 0 within (or no limit, -1), 1 beyond it, 2 beyond 1.1 times it.
int LimitCheckCode(double value, double limit);

}  // namespace velmar
