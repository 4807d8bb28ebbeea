// HullReads: the hull's values as a method reads them, each read once. A method that needs
// many form coefficients reads the same items again and again (every coefficient re-reads its
// inputs, converting and rounding each time); through HullReads each item, displacement
// volume and coefficient is read at its first use and kept.
#pragma once

#include <array>
#include <bitset>

#include "vessel/hull.h"

namespace velmar {

// The first read of a value reads the hull (pushing the word of a failed check) or forms the
// coefficient (pushing the word of its range test), exactly as a read of the hull does. A
// later use gives the same number and would push the same word again, which the error stack
// already holds; so it is left out. That holds while the hull is not written to and its error
// stack still holds the words of the values read (or none was pushed).
class HullReads {
 public:
  explicit HullReads(const clsVXHull& hull) : hull_(hull) {}
  const clsVXHull& Hull() const { return hull_; }

  // A value already read is returned inline; the first read of it goes out of line.
  double Read(clsVXHull::Field f, int unit) {
    const auto slot = static_cast<unsigned>(unit + 1);
    if (slot < kUnitSlots) {
      const size_t at = static_cast<size_t>(FieldId(f)) * kUnitSlots + slot;
      if (haveField_[at]) return fields_[at];
    }
    return FirstRead(f, unit);
  }
  double DisplacementVolume(int unit);
  double Coefficient(clsVXHull::Coef c) {
    const auto at = static_cast<size_t>(c);
    return haveCoef_[at] ? coefs_[at] : FirstCoefficient(c);
  }

  // Named like the hull's own members.
#define VX_QTY(N, FAM, ...) \
  double N(int unit) { return Read(clsVXHull::Field::N, unit); }
#define VX_REAL(N, ...) \
  double N() { return Read(clsVXHull::Field::N, kCurrent); }
#define VX_INT(N, ...)
#define VX_ENUM(N, ...)
#define VX_TEXT(N, ...)
#include "vessel/hull_fields.def"
#define VX_HULL_READ_COEF(N, S, F) \
  double N() { return Coefficient(clsVXHull::Coef::N); }
  VX_HULL_COEFS(VX_HULL_READ_COEF)
#undef VX_HULL_READ_COEF

 private:
  double FirstRead(clsVXHull::Field f, int unit);
  double FirstCoefficient(clsVXHull::Coef c);

  // Unit indices kCurrent (-1) to 6 of every field; a field has one unit family.
  static constexpr int kUnitSlots = 8;
  static constexpr int kFieldCount = static_cast<int>(clsVXHull::Field::Count);
  static constexpr int kCoefCount = static_cast<int>(clsVXHull::Coef::Count);

  const clsVXHull& hull_;
  std::array<double, kFieldCount * kUnitSlots> fields_;
  std::bitset<kFieldCount * kUnitSlots> haveField_;
  std::array<double, kUnitSlots> volumes_;
  std::bitset<kUnitSlots> haveVolume_;
  double density_ = 0.0;
  bool haveDensity_ = false;
  std::array<double, kCoefCount> coefs_;
  std::bitset<kCoefCount> haveCoef_;
};

}  // namespace velmar
