// The Method Expert: every method of one family rated against the present hull and design
// speed, listed best first with the parameter rows of each, and the acceptance of a choice.
// The window and velmar-cli show the same list.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "validation/parameter_check.h"

namespace velmar {

// The families of methods, each with its own method list and map to the check ids.
enum class MethodFamily { Hull, Appendage, Wind, Seas, Channel, Interaction };
inline constexpr MethodFamily kMethodFamilies[] = {MethodFamily::Hull,    MethodFamily::Appendage,
                                                   MethodFamily::Wind,    MethodFamily::Seas,
                                                   MethodFamily::Channel, MethodFamily::Interaction};

// "hull", "appendage", "wind", "seas", "channel", "interaction".
const char* MethodFamilyName(MethodFamily family);
// The family of a name as above (any case); false if unknown.
bool MethodFamilyFromName(std::string_view name, MethodFamily& family);
// "Hull drag", "Appendage drag", ... "Hull-propulsor interaction".
const char* MethodFamilyTitle(MethodFamily family);
// The mode whose method selector opens the family: propulsion for interaction, else
// resistance.
Mode MethodFamilyMode(MethodFamily family);
// Methods of the family, the label of one (as its list shows it) and its check id (-1 for an
// index outside the list).
int MethodFamilyCount(MethodFamily family);
std::string MethodFamilyLabel(MethodFamily family, int methodIndex);
int MethodFamilyCheckId(MethodFamily family, int methodIndex);
// The method index of a label (any case) in the family; -1 if absent.
int MethodFamilyIndex(MethodFamily family, std::string_view label);
// The method the project has selected for the family.
int SelectedMethod(const ModelSet& set, MethodFamily family);

// One method's evaluation, with its rows (empty when there is no design speed).
struct MethodEvaluation : MethodCheck {
  int methodIndex = 0;
  std::string label;
};

// Every method of the family in list order, checked with full evaluation in `mode`; the
// error stacks that the reads filled are cleared afterwards.
std::vector<MethodEvaluation> EvaluateMethods(MethodFamily family, const ModelSet& set, Mode mode);
// The evaluators of the window, on the open project in the current mode.
std::vector<MethodEvaluation> EvaluateHullMethods();
std::vector<MethodEvaluation> EvaluateAppendageMethods();
std::vector<MethodEvaluation> EvaluateWindMethods();
std::vector<MethodEvaluation> EvaluateSeasMethods();
std::vector<MethodEvaluation> EvaluateChannelMethods();
std::vector<MethodEvaluation> EvaluateInteractionMethods();

// Best first: rating 6 down to 0, ties in list order. Every method stays in the list.
std::vector<MethodEvaluation> RankMethods(std::vector<MethodEvaluation> evaluations);

struct RgbColour {
  int red, green, blue;
  bool operator==(const RgbColour&) const = default;
};
// Text colour of a row by rating: 6 blue, 5 magenta, 4 black, below red.
RgbColour MethodRatingColour(int rating);
// "blue", "magenta", "black", "red".
const char* MethodRatingColourName(int rating);

// The line under the parameter table: the note, or "Watch for notes here..." without one.
std::string MethodExpertNoteLine(const std::string& note);

// The Expert's list: the family ranked for the vessel, with rows.
struct MethodExpertList {
  MethodFamily family = MethodFamily::Hull;
  Mode mode = Mode::Resistance;
  bool designSpeed = false;  // without one every method rates 0, in list order, without rows
  std::vector<MethodEvaluation> methods;
};
MethodExpertList BuildMethodExpertList(MethodFamily family, const ModelSet& set, Mode mode);
MethodExpertList BuildMethodExpertList(MethodFamily family, const ModelSet& set);  // in the family's mode

// The two application-wide results of the window: its return code (1 = OK) and the method
// index of the row taken.
struct MethodExpertResult {
  int returnCode = 0;
  int selectedMethod = -1;
};
MethodExpertResult& MethodExpertSelection();

// Acts on a return code of 1 only: stores the method index in the family's method property.
// For hull drag the ITTC-78 hydrodynamic type follows the method: planing (2) above index 31,
// ITTC-78 (CT) (1) otherwise, written only when it differs. False when nothing was stored.
bool ApplyMethodExpertResult(MethodFamily family, const MethodExpertResult& result, const ModelSet& set);

}  // namespace velmar
