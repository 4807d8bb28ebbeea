// Resistance settings: the label and key tables of every selection, and the field table.
#include "resistance/resistance_settings.h"

#include <initializer_list>
#include <utility>

#include "core/constants.h"

namespace velmar {

const LabelList kDragEnabledLabels = {{"Off", "Calc", "Lock", "Enter"}, {"Off", "Calc", "Lock", "Enter"}};
// clang-format off
const LabelList kHullDragMethodLabels = Keyed({
    {"Holtrop", "Holtrop"},                           //  0
    {"NTUA Series", "NTUASeries"},
    {"Fung (HSTS)", "FungHSTS"},
    {"Roach", "Roach"},
    {"Oortmerssen", "Oortmerssen"},
    {"Delft Series (1)", "DelftSeries1"},             //  5
    {"Delft Series (1/2)", "DelftSeries12"},
    {"Delft Series (2)", "DelftSeries2"},
    {"Delft Series (1/2/3)", "DelftSeries123"},
    {"Delft Series (2/3)", "DelftSeries23"},
    {"USNA YP Series (RB)", "USNAYPSeriesRB"},        // 10
    {"USNA YP Series (HC)", "USNAYPSeriesHC"},
    {"Fung (CRTS)", "FungCRTS"},
    {"Jin (1980)", "Jin1980"},
    {"Jin (1988)", "Jin1988"},
    {"DeGroot (RB)", "DeGrootRB"},                    // 15
    {"DeGroot (HC)", "DeGrootHC"},
    {"Mercier", "Mercier"},
    {"NPL Series", "NPLSeries"},
    {"Lahtiharju (RB)", "LahtiharjuRB"},
    {"Lahtiharju (HC)", "LahtiharjuHC"},              // 20
    {"Simple Ship", "SimpleShip"},
    {"UBC Series", "UBCSeries"},
    {"Swift", "Swift"},
    {"Kostov", "Kostov"},
    {"Hamburg EWB Series", "HamburgEWBSeries"},       // 25
    {"BSRA Series (Full)", "BSRASeriesFull"},
    {"BSRA Series (Medium)", "BSRASeriesMedium"},
    {"BSRA Series (Light)", "BSRASeriesLight"},
    {"Series 60", "Series60"},
    {"SSPA Cargo Series", "SSPACargoSeriesSeries"},   // 30, the key as files hold it
    {"Andersen", "Andersen"},
    {"Savitsky", "Savitsky"},                         // 32..35: planing methods
    {"Simple Planing", "SimplePlaning"},
    {"Series 62", "Series62"},
    {"Series 65B", "Series65B"},
});
const LabelList kAppendageDragMethodLabels = Keyed({
    {"Percentage", "Percentage"},
    {"Radojcic (Simple Planing)", "RadojcicSimplePlaning"},
    {"Blount (Simple Planing)", "BlountSimplePlaning"},
    {"Fung (Simple FPP)", "FungSimpleFPP"},
    {"Fung (Simple CPP)", "FungSimple CPP"},          // the key as files hold it
    {"Holtrop (Component)", "HoltropComponent"},
    {"Kirkman (Component)", "KirkmanComponent"},
    {"Hadler (Component)", "HadlerComponent"},
    {"Teeters (Sailboat)", "TeetersSailboat"},
});
// clang-format on
const LabelList kHullDragExpansionDetailLabels = {{"Standard", "Custom"}, {"Standard", "Custom"}};
const LabelList kHullDragMethodCheckLabels = {{"OK", "Uncertain", "Fail", "Missing"},
                                              {"OK", "Uncertain", "Fail", "Missing"}};
const LabelList kHumpMultiplierApplyFactorLabels = {{"Apply full", "Apply half (std)"},
                                                    {"ApplyFull", "ApplyHalf"}};
const LabelList kPropulsorLiftCorrApplyFactorLabels = {{"Apply full (std)", "Apply half"},
                                                       {"ApplyFull", "ApplyHalf"}};
const LabelList kSprayCorrApplyFactorLabels = {{"Apply full (no deflector)", "Apply half (with deflector)"},
                                               {"ApplyFull", "ApplyHalf"}};
// The added-drag methods from index 3 (wind, channel) and 5 (seas) on are the published
// methods of the program; the ones before them are kept so that every file still reads.
const LabelList kWindDragMethodLabels = Keyed({{"Taylor", "Taylor"},
                                               {"Hughes", "Hughes"},
                                               {"Iwai", "Iwai"},
                                               {"Fujiwara (ITTC)", "FujiwaraITTC"},
                                               {"Isherwood", "Isherwood"},
                                               {"Blendermann", "Blendermann"},
                                               {"ITTC data set", "ITTCDataSet"}});
const LabelList kSeasDragMethodLabels = Keyed({{"Small Naval Series", "SmallNavalSeries"},
                                               {"Aertssen", "Aertssen"},
                                               {"Hoggard", "Hoggard"},
                                               {"Fridsma Series", "FridsmaSeries"},
                                               {"Workboat", "Workboat"},
                                               {"STAWAVE-1", "STAWAVE1"},
                                               {"STAWAVE-2", "STAWAVE2"},
                                               {"Kwon", "Kwon"}});
const LabelList kChannelDragMethodLabels = Keyed({{"Landweber", "Landweber"},
                                                  {"Schlichting", "Schlichting"},
                                                  {"Sturtzel-Graff", "SturtzelGraff"},
                                                  {"Lackenby", "Lackenby"},
                                                  {"Raven (ITTC)", "RavenITTC"},
                                                  {"Karpov", "Karpov"}});
const LabelList kMarginDragBasisLabels =
    Keyed({{"Hull drag only", "HullDragOnly"}, {"Hull + added drag", "HullPlusAddedDrag"}});

namespace {
const FieldDesc kResistanceFields[] = {
#include "core/fields_table.h"
#include "resistance/resistance_fields.def"
};

}  // namespace

clsVXResistance::clsVXResistance() : DataClass(kResistanceFields, nullptr) {}

std::shared_ptr<clsVXResistance> clsVXResistance::CopyClass() const {
  auto copy = std::make_shared<clsVXResistance>();
  copy->CopyDataFrom(*this);
  return copy;
}

void clsVXResistance::ConvertAllData(const clsVXUnits& /*newUnits*/, const clsVXUnits& /*oldUnits*/) {}

}  // namespace velmar
