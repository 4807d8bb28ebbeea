// clsVXHull: the hull form (principal dimensions, hydrostatics, transom, bulb, planing-bottom
// stations, centres, transom lift devices, propulsor position) and the form coefficients
// derived from it.
#pragma once

#include "core/data_class.h"
#include "core/water.h"

namespace velmar {

extern const LabelList kHullConfigTypeLabels;
extern const LabelList kHullHydrodynamicDataSetLabels;
extern const LabelList kChineTypeLabels;
extern const LabelList kHullPropulsorTypeLabels;
extern const LabelList kTransomLiftDeviceTypeLabels;

// The form coefficients: name, whether it has a Symbol member (Sym) and a Formatted member
// (Fmt, "0.000"). Guards, formulas, tests and words are in the table of hull.cpp.
#define VX_HULL_COEFS(C)                  \
  C(CoefBlock, Sym, Fmt)                  \
  C(CoefPrismatic, Sym, NoFmt)            \
  C(CoefVerticalPrismatic, Sym, NoFmt)    \
  C(CoefAreaSectMax, Sym, Fmt)            \
  C(CoefWaterplane, Sym, Fmt)             \
  C(CoefLwlBwlRatio, Sym, Fmt)            \
  C(CoefBwlTvolRatio, Sym, Fmt)           \
  C(CoefLwlTvolRatio, NoSym, NoFmt)       \
  C(CoefSLwlRatio, NoSym, Fmt)            \
  C(CoefLambda, Sym, NoFmt)               \
  C(CoefWettedSurfaceFroudeCWS, Sym, Fmt) \
  C(CoefWettedSurfaceCS, Sym, Fmt)        \
  C(CoefAtAxRatio, Sym, Fmt)              \
  C(CoefAbtAxRatio, Sym, Fmt)             \
  C(CoefAbulbAxRatio, NoSym, NoFmt)       \
  C(CoefBtBxRatio, NoSym, Fmt)            \
  C(CoefTtTvolRatio, NoSym, Fmt)          \
  C(CoefLwlVol, Sym, Fmt)                 \
  C(CoefVolBwl, Sym, Fmt)                 \
  C(CoefVolBpx, Sym, Fmt)                 \
  C(CoefLpVol, Sym, NoFmt)                \
  C(CoefLCBLwlRatio, NoSym, Fmt)          \
  C(CoefLCFLwlRatio, NoSym, Fmt)          \
  C(CoefLCGBpRatio, NoSym, NoFmt)         \
  C(CoefLCGLpRatio, NoSym, Fmt)           \
  C(CoefApVolRatio, NoSym, NoFmt)         \
  C(CoefLpApRatio, NoSym, NoFmt)          \
  C(CoefLpBpxRatio, Sym, NoFmt)

// The inverse functions: a coefficient in, the value of a stored item out (not stored).
#define VX_HULL_INVERSES(I)           \
  I(GetDisplacementFromCb)            \
  I(GetDisplacementFromCvol)          \
  I(GetWettedSurfaceFromCoefCS)       \
  I(GetCoefCSFromWettedSurface)       \
  I(GetBeamWLMaxFromLBRatio)          \
  I(GetDraftSubmergedMaxFromBTRatio)  \
  I(GetDemihullSpacingFromSLRatio)    \
  I(GetXBuoyancyFwdTrFromLCBLRatio)   \
  I(GetXWaterplaneFwdTrFromLCFLRatio) \
  I(GetBulbAreaSectFromAbtAxRatio)    \
  I(GetAreaSectAtTrFromAtAxRatio)     \
  I(GetMaxSectionAreaFromCx)          \
  I(GetWaterplaneAreaFromCw)          \
  I(GetXGravityFwdTrFromLCGLPRatio)

class clsVXHull : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "vessel/hull_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "vessel/hull_fields.def"

#define VX_HULL_ENUM(N, ...) N,
  enum class Coef { VX_HULL_COEFS(VX_HULL_ENUM) Count };
  enum class Inverse { VX_HULL_INVERSES(VX_HULL_ENUM) Count };
#undef VX_HULL_ENUM

  explicit clsVXHull(std::shared_ptr<clsVXUnits> units = nullptr,
                     std::shared_ptr<clsVXWaterProperties> water = nullptr);
  void SetLinkedClasses(std::shared_ptr<clsVXUnits> units, std::shared_ptr<clsVXWaterProperties> water);
  const std::shared_ptr<clsVXWaterProperties>& WaterProperties() const { return water_; }
  std::shared_ptr<clsVXHull> CopyClass() const;

  // Captions: the chord/depth caption follows the device type; the tunnel captions carry
  // the length unit.
  std::string FieldNameOf(int field) const override;
  std::string PropellerTunnelEffectiveDiameterFieldNameWithUnits() const;
  std::string PropellerTunnelRecessDepthFieldNameWithUnits() const;

  // Displacement over the density of the linked water, in the volume unit `unit` (the cube
  // of the length unit); 0 when the density is not positive.
  double DisplacementVolume(int unit) const;
  std::string DisplacementVolumeSymbol() const { return "VOL"; }

  // Form coefficients, each 0 when one of its inputs is missing; a coefficient outside its
  // range pushes its word and is returned all the same.
  double Coefficient(Coef c) const;
  std::string CoefficientSymbol(Coef c) const;
  std::string CoefficientFormatted(Coef c) const;
#define VX_HULL_SYM_Sym(N) \
  std::string N##Symbol() const { return CoefficientSymbol(Coef::N); }
#define VX_HULL_SYM_NoSym(N)
#define VX_HULL_FMT_Fmt(N) \
  std::string N##Formatted() const { return CoefficientFormatted(Coef::N); }
#define VX_HULL_FMT_NoFmt(N)
#define VX_HULL_COEF(N, S, F)                       \
  double N() const { return Coefficient(Coef::N); } \
  VX_HULL_SYM_##S(N) VX_HULL_FMT_##F(N)
  VX_HULL_COEFS(VX_HULL_COEF)
#undef VX_HULL_COEF
#undef VX_HULL_SYM_Sym
#undef VX_HULL_SYM_NoSym
#undef VX_HULL_FMT_Fmt
#undef VX_HULL_FMT_NoFmt

  // Planing-bottom stations at `x` forward of the transom, stations read in `unit`. With no
  // aft station (aft chine beam not positive) each gives its forward station value.
  // The chine beam (BPX) is held at the larger beam from the forward station on; deadrise
  // and chine height extrapolate.
  double CalcEffectiveChineBeam(double x, int unit) const;
  double CalcEffectiveAngleDeadriseDeg(double x, int unit) const;
  double CalcEffectiveZChineHeightBelowWL(double x, int unit) const;
  std::string EffectiveChineBeamSymbol() const { return "BPX"; }
  std::string EffectiveAngleDeadriseSymbol() const { return "Deadrise"; }
  // From the aft to the forward station, in degrees: the change of the deadrise rise of the
  // chine above the keel (warp), and the slope of the keel line below the waterline (static
  // baseline trim). Both 0 without an aft station or with both stations at one position.
  double CalcEffectiveChineWarpDeg() const;
  double CalcStaticEffectiveBaselineTrimAngleDeg() const;

  // One stored shape factor serves both scales: Harvald's bow and stern coefficients and
  // the Holtrop stern coefficient.
  double CalcHarvaldBowCoef() const { return 3.0 * BowShapeFactor(); }
  double CalcHarvaldSternCoef() const { return 3.0 * SternShapeFactor(); }
  double CalcHoltropSternCoef() const { return 10.0 * SternShapeFactor(); }

  // Inverse functions: the item value for a coefficient, in the current unit, rounded to 6
  // significant digits (CS itself is not rounded); 0 when an input is missing.
  double InverseOf(Inverse f, double coef) const;
#define VX_HULL_INV(N) \
  double N(double coef) const { return InverseOf(Inverse::N, coef); }
  VX_HULL_INVERSES(VX_HULL_INV)
#undef VX_HULL_INV

 private:
  std::shared_ptr<clsVXWaterProperties> water_;
};

}  // namespace velmar
