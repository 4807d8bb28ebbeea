// clsVXResistance: which drag components a resistance prediction computes and by which
// method: hull drag with its expansion and corrections, appendage, wind, seas, shallow water
// or channel, and the design margin. A settings object without links and without quantities.
#pragma once

#include <array>
#include <span>
#include <string>

#include "core/data_class.h"

namespace velmar {

extern const LabelList kHullDragEnabledLabels;  // Off, Calc, Lock (and the file key Enter)
extern const LabelList kDragEnabledLabels;      // Off, Calc, Lock, Enter
extern const LabelList kDragTechniqueLabels;
extern const LabelList kHullDragMethodLabels;
extern const LabelList kHullDragExpansionDetailLabels;
extern const LabelList kResistanceOffOnLabels;
extern const LabelList kHullDragMethodCheckLabels;
extern const LabelList kHumpMultiplierApplyFactorLabels;
extern const LabelList kPropulsorLiftCorrApplyFactorLabels;
extern const LabelList kSprayCorrApplyFactorLabels;
extern const LabelList kAppendageDragMethodLabels;
extern const LabelList kWindDragMethodLabels;
extern const LabelList kSeasDragMethodLabels;
extern const LabelList kChannelDragMethodLabels;
extern const LabelList kMarginDragBasisLabels;

// Text settings, which the field table cannot hold: name, caption, value of a new object, and
// the field whose file tag the text's tag follows.
#define VX_RESISTANCE_TEXTS(T)                                    \
  T(HullDragReferenceShip, "Reference ship:", "", HullDragMethod) \
  T(HullDragDefinedSource, "Source:", "Manual", HullDragMethod)

class clsVXResistance : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
#include "resistance/resistance_fields.def"
    Count
  };
#include "core/fields_accessors.h"
#include "resistance/resistance_fields.def"

#define VX_TEXT_ENUM(N, ...) N,
  enum class Text { VX_RESISTANCE_TEXTS(VX_TEXT_ENUM) Count };
#undef VX_TEXT_ENUM
  struct TextDesc {
    const char* name;
    const char* label;
    const char* init;
    Field after;  // the text's tag follows this field's tag in the file block
  };

  clsVXResistance();
  // The class has no linked classes.
  void SetLinkedClasses() {}
  std::shared_ptr<clsVXResistance> CopyClass() const;
  // The settings hold no quantity: a change of units leaves them as they are.
  void ConvertAllData(const clsVXUnits& newUnits, const clsVXUnits& oldUnits) override;
  // Every index and number to 0, every text empty.
  void ClearAllData() override;

  // Text settings, in table order.
  static std::span<const TextDesc> Texts();
  const std::string& TextOf(Text t) const { return texts_[static_cast<size_t>(t)]; }
  void SetText(Text t, std::string value) { texts_[static_cast<size_t>(t)] = std::move(value); }
  std::string TextFieldNameOf(Text t) const;
#define VX_TEXT_ACCESSORS(N, ...)                                   \
  const std::string& N() const { return TextOf(Text::N); }          \
  void N(std::string value) { SetText(Text::N, std::move(value)); } \
  std::string N##FieldName() const { return TextFieldNameOf(Text::N); }
  VX_RESISTANCE_TEXTS(VX_TEXT_ACCESSORS)
#undef VX_TEXT_ACCESSORS

 private:
  std::array<std::string, static_cast<size_t>(Text::Count)> texts_;
};

}  // namespace velmar
