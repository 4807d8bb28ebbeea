// Water properties by type and temperature: density and viscosity are cubic polynomials in
// the temperature difference from 15 degC, fitted to the standard tables of fresh and salt
// water, with separate viscosity coefficients below, within and above +-5 degC of 15 degC.
#include "core/water.h"

namespace velmar {

const LabelList kWaterDefinitionLabels = {{"Salt", "Fresh", "Brackish", "Custom"},
                                          {"Salt", "Fresh", "Brackish", "Custom"}};

namespace {
const FieldDesc kWaterFields[] = {
#include "core/fields_table.h"
#include "core/water_fields.def"
};

double Poly(double base, double a, double b, double c, double dT) {
  return base * (1.0 + a * dT + b * dT * dT + c * dT * dT * dT);
}
}  // namespace

clsVXWaterProperties::clsVXWaterProperties(std::shared_ptr<clsVXUnits> units)
    : DataClass(kWaterFields, std::move(units)), labels_(kWaterDefinitionLabels.labels) {}

std::shared_ptr<clsVXWaterProperties> clsVXWaterProperties::CopyClass() const {
  auto copy = std::make_shared<clsVXWaterProperties>(Units());
  copy->CopyDataFrom(*this);
  copy->labels_ = labels_;
  return copy;
}

std::string clsVXWaterProperties::WaterDefinitionLabel(int index) const {
  if (index == -1) index = WaterDefinitionIndex();
  return labels_.at(static_cast<size_t>(index));
}

void clsVXWaterProperties::WaterDefinitionLabel(int index, std::string label) {
  if (index == -1) index = WaterDefinitionIndex();
  labels_.at(static_cast<size_t>(index)) = std::move(label);
}

double clsVXWaterProperties::TemperatureDifference() const {
  const double t = Temperature(kCurrent);
  if (t == 0.0) return 0.0;
  return 15.0 - Units()->ConvertUnitTemperature(t, kDegC, kCurrent);
}

void clsVXWaterProperties::SetWaterPropertiesToStandardValues(int index) {
  if (index != -1) WaterDefinitionIndex(index);
  Temperature(kCurrent, 0.0);
  double density = Raw(FieldId(Field::Density));
  double viscosity = Raw(FieldId(Field::Viscosity));
  CalcDensityAndViscosity(density, viscosity);
  Density(kCurrent, density);
  Viscosity(kCurrent, viscosity);
}

bool clsVXWaterProperties::CalcDensityAndViscosity(double& density, double& viscosity) const {
  const double dT = TemperatureDifference();
  switch (WaterDefinitionIndex()) {
    case 0:
      density = CalcStandardDensitySalt(dT);
      viscosity = CalcStandardViscositySalt(dT);
      break;
    case 1:
      density = CalcStandardDensityFresh(dT);
      viscosity = CalcStandardViscosityFresh(dT);
      break;
    case 2:
      density = (CalcStandardDensitySalt(dT) + CalcStandardDensityFresh(dT)) * 0.5;
      viscosity = (CalcStandardViscositySalt(dT) + CalcStandardViscosityFresh(dT)) * 0.5;
      break;
    default:
      break;  // Custom: the typed values stand
  }
  return true;
}

// The bases are given in the SI unit (selected index 1) and in the Imperial unit (every
// other index, a custom unit included).
double clsVXWaterProperties::CalcStandardDensitySalt(double dT) const {
  const double base = Units()->DensityIndex() == kKgPerM3 ? 1026.0 : 1.9908;
  return Poly(base, 0.000217057, -4.4285e-6, -4.24858e-8, dT);
}

double clsVXWaterProperties::CalcStandardDensityFresh(double dT) const {
  const double base = Units()->DensityIndex() == kKgPerM3 ? 999.1 : 1.9386;
  return Poly(base, 0.000150674, -5.88986e-6, -4.36286e-8, dT);
}

double clsVXWaterProperties::CalcStandardViscositySalt(double dT) const {
  const double base = Units()->ViscosityIndex() == kM2PerSec ? 1.1892e-6 : 1.2798e-5;
  if (dT < -5.0) return Poly(base, 0.0248941, 0.000479131, 5.83649e-6, dT);
  if (dT <= 5.0) return Poly(base, 0.0250061, 0.000519622, 9.67183e-6, dT);
  return Poly(base, 0.0252599, 0.000426863, 1.8724e-5, dT);
}

double clsVXWaterProperties::CalcStandardViscosityFresh(double dT) const {
  const double base = Units()->ViscosityIndex() == kM2PerSec ? 1.1386e-6 : 1.2256e-5;
  if (dT < -5.0) return Poly(base, 0.0261977, 0.0005224, 6.3582e-6, dT);
  if (dT <= 5.0) return Poly(base, 0.0263099, 0.000563551, 1.02465e-5, dT);
  return Poly(base, 0.0265244, 0.000483477, 1.8232e-5, dT);
}

}  // namespace velmar
