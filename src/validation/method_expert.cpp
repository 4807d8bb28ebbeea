// The Method Expert: families of methods, their evaluation and ranking, the colours of the
// list, and the acceptance of a method.
#include "validation/method_expert.h"

#include <algorithm>
#include <iterator>

#include "core/helpers.h"

namespace velmar {
namespace {

// A family: its name, its label list, the map from method index to check id, and where the
// project keeps its selection.
struct FamilyRow {
  MethodFamily family;
  const char* name;
  const char* title;  // as the Expert's window and the command line head the list
  const LabelList* labels;
  std::vector<int> checkIds;
  Mode mode;
};

const std::vector<FamilyRow>& Families() {
  static const std::vector<FamilyRow> rows = {
      {MethodFamily::Hull,
       "hull",
       "Hull drag",
       &kHullDragMethodLabels,
       {0,  18, 1,  23, 19, 9,  10, 11, 12, 13, 24, 25, 2,  26, 15, 7,  8,  17,
        27, 29, 30, 31, 32, 22, 3,  14, 4,  6,  5,  20, 21, 33, 34, 35, 36, 37},
       Mode::Resistance},
      {MethodFamily::Appendage,
       "appendage",
       "Appendage drag",
       &kAppendageDragMethodLabels,
       {42, 43, 44, 45, 45, 46, 47, 48, 49},
       Mode::Resistance},
      {MethodFamily::Wind,
       "wind",
       "Wind drag",
       &kWindDragMethodLabels,
       {50, 51, 52, 68, 69, 70, 71},
       Mode::Resistance},
      {MethodFamily::Seas,
       "seas",
       "Seas drag",
       &kSeasDragMethodLabels,
       {53, 54, 55, 56, 57, 72, 73, 74},
       Mode::Resistance},
      {MethodFamily::Channel,
       "channel",
       "Shallow water and channel drag",
       &kChannelDragMethodLabels,
       {58, 59, 60, 75, 76, 77},
       Mode::Resistance},
      {MethodFamily::Interaction,
       "interaction",
       "Hull-propulsor interaction",
       &kPropulsionInteractionMethodLabels,
       {31, 20, 21, 33, 62, 19, 0, 63, 35, 36, 64, 61},
       Mode::Propulsion},
  };
  return rows;
}

const FamilyRow& FamilyOf(MethodFamily family) {
  return *std::find_if(Families().begin(), Families().end(),
                       [family](const FamilyRow& r) { return r.family == family; });
}

// Hull drag methods from this index on are planing methods.
constexpr int kFirstPlaningHullMethod = 32;
constexpr int kHydroITTC78CT = 1, kHydroPlaning = 2;

}  // namespace

const char* MethodFamilyName(MethodFamily family) { return FamilyOf(family).name; }

const char* MethodFamilyTitle(MethodFamily family) { return FamilyOf(family).title; }

bool MethodFamilyFromName(std::string_view name, MethodFamily& family) {
  for (const FamilyRow& r : Families()) {
    if (EqualsNoCase(name, r.name)) {
      family = r.family;
      return true;
    }
  }
  return false;
}

Mode MethodFamilyMode(MethodFamily family) { return FamilyOf(family).mode; }

int MethodFamilyCount(MethodFamily family) { return static_cast<int>(FamilyOf(family).checkIds.size()); }

std::string MethodFamilyLabel(MethodFamily family, int methodIndex) {
  const LabelList& l = *FamilyOf(family).labels;
  return methodIndex >= 0 && methodIndex < static_cast<int>(l.labels.size()) ? l.labels[methodIndex] : "";
}

int MethodFamilyCheckId(MethodFamily family, int methodIndex) {
  const std::vector<int>& ids = FamilyOf(family).checkIds;
  return methodIndex >= 0 && methodIndex < static_cast<int>(ids.size()) ? ids[methodIndex] : kCheckIdNone;
}

int MethodFamilyIndex(MethodFamily family, std::string_view label) {
  for (int i = 0; i < MethodFamilyCount(family); ++i)
    if (EqualsNoCase(MethodFamilyLabel(family, i), label)) return i;
  return -1;
}

int SelectedMethod(const ModelSet& set, MethodFamily family) {
  const clsVXResistance& r = *set.Resistance;
  switch (family) {
    case MethodFamily::Hull:
      return r.HullDragMethod();
    case MethodFamily::Appendage:
      return r.AppendageDragMethod();
    case MethodFamily::Wind:
      return r.WindDragMethod();
    case MethodFamily::Seas:
      return r.SeasDragMethod();
    case MethodFamily::Channel:
      return r.ChannelDragMethod();
    case MethodFamily::Interaction:
      return set.Propulsion->PropulsionInteractionMethod();
  }
  return -1;
}

std::vector<MethodEvaluation> EvaluateMethods(MethodFamily family, const ModelSet& set, Mode mode) {
  std::vector<MethodEvaluation> out;
  try {
    for (int i = 0; i < MethodFamilyCount(family); ++i) {
      MethodEvaluation e;
      static_cast<MethodCheck&>(e) = CheckMethod(set, mode, MethodFamilyCheckId(family, i), true);
      e.methodIndex = i;
      e.label = MethodFamilyLabel(family, i);
      out.push_back(std::move(e));
    }
  } catch (...) {
    out.clear();  // out of memory: an empty list rather than a half one
  }
  return out;
}

std::vector<MethodEvaluation> EvaluateHullMethods() {
  return EvaluateMethods(MethodFamily::Hull, App().primary, App().CurrentMode);
}
std::vector<MethodEvaluation> EvaluateAppendageMethods() {
  return EvaluateMethods(MethodFamily::Appendage, App().primary, App().CurrentMode);
}
std::vector<MethodEvaluation> EvaluateWindMethods() {
  return EvaluateMethods(MethodFamily::Wind, App().primary, App().CurrentMode);
}
std::vector<MethodEvaluation> EvaluateSeasMethods() {
  return EvaluateMethods(MethodFamily::Seas, App().primary, App().CurrentMode);
}
std::vector<MethodEvaluation> EvaluateChannelMethods() {
  return EvaluateMethods(MethodFamily::Channel, App().primary, App().CurrentMode);
}
std::vector<MethodEvaluation> EvaluateInteractionMethods() {
  return EvaluateMethods(MethodFamily::Interaction, App().primary, App().CurrentMode);
}

// For each rating from 6 down to 0, the methods of that rating in list order: no key but the
// rating, so the method already selected has no precedence.
std::vector<MethodEvaluation> RankMethods(std::vector<MethodEvaluation> evaluations) {
  std::vector<MethodEvaluation> ranked;
  ranked.reserve(evaluations.size());
  for (int rating = 6; rating >= 0; --rating)
    for (MethodEvaluation& e : evaluations)
      if (e.rating == rating) ranked.push_back(std::move(e));
  return ranked;
}

RgbColour MethodRatingColour(int rating) {
  if (rating >= 6) return {0, 0, 255};
  if (rating == 5) return {255, 0, 255};
  if (rating == 4) return {0, 0, 0};
  return {255, 0, 0};
}

const char* MethodRatingColourName(int rating) {
  if (rating >= 6) return "blue";
  if (rating == 5) return "magenta";
  if (rating == 4) return "black";
  return "red";
}

std::string MethodExpertNoteLine(const std::string& note) {
  return note.empty() ? "Watch for notes here..." : note;
}

MethodExpertList BuildMethodExpertList(MethodFamily family, const ModelSet& set, Mode mode) {
  MethodExpertList list;
  list.family = family;
  list.mode = mode;
  double speed = 0.0;
  list.designSpeed = set.SpeedPerformance && DesignSpeed(*set.SpeedPerformance, kCurrent, speed);
  list.methods = RankMethods(EvaluateMethods(family, set, mode));
  return list;
}

MethodExpertList BuildMethodExpertList(MethodFamily family, const ModelSet& set) {
  return BuildMethodExpertList(family, set, MethodFamilyMode(family));
}

MethodExpertResult& MethodExpertSelection() {
  thread_local MethodExpertResult result;  // one per thread, like the project it was made for
  return result;
}

bool ApplyMethodExpertResult(MethodFamily family, const MethodExpertResult& result, const ModelSet& set) {
  const int i = result.selectedMethod;
  if (result.returnCode != 1 || i < 0 || i >= MethodFamilyCount(family) || !set.Resistance || !set.ITTC78 ||
      !set.Propulsion)
    return false;
  clsVXResistance& r = *set.Resistance;
  switch (family) {
    case MethodFamily::Hull: {
      r.HullDragMethod(i);
      const int type = i >= kFirstPlaningHullMethod ? kHydroPlaning : kHydroITTC78CT;
      if (set.ITTC78->HullHydrodynamicType() != type) set.ITTC78->HullHydrodynamicType(type);
      break;
    }
    case MethodFamily::Appendage:
      r.AppendageDragMethod(i);
      break;
    case MethodFamily::Wind:
      r.WindDragMethod(i);
      break;
    case MethodFamily::Seas:
      r.SeasDragMethod(i);
      break;
    case MethodFamily::Channel:
      r.ChannelDragMethod(i);
      break;
    case MethodFamily::Interaction:
      set.Propulsion->PropulsionInteractionMethod(i);
      break;
  }
  return true;
}

}  // namespace velmar
