// The open project's model objects as one set, and the process-wide state that holds the
// open project beside its reference sets. The members are held by pointer, so this header
// needs only the class names: every layer can pass a set around, and a module includes the
// headers of the classes it actually uses.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace velmar {

class clsVXProject;
class clsVXUnits;
class clsVXWaterProperties;
class clsVXHull;
class clsVXAppendage;
class clsVXEnvironment;
class clsVXITTC78Expansion;
class clsVXResistance;
class clsVXPropulsion;
class clsVXPropeller;
class clsVXPropellerSeries;
class clsVXPropellerSizing;
class clsVXEngine;
class clsVXWaterjet;
class clsVXSpeedPerformance;
class clsVXTaskList;

// One set of model objects, wired among itself by SetLinkedClasses. Members a set does not
// hold stay empty (the reference propeller set has no hull).
struct ModelSet {
  std::shared_ptr<clsVXProject> Project;
  std::shared_ptr<clsVXUnits> Units;
  std::shared_ptr<clsVXWaterProperties> WaterProperties;
  std::shared_ptr<clsVXHull> Hull;
  std::shared_ptr<clsVXAppendage> Appendage;
  std::shared_ptr<clsVXEnvironment> Environment;
  std::shared_ptr<clsVXITTC78Expansion> ITTC78;
  std::shared_ptr<clsVXResistance> Resistance;
  std::shared_ptr<clsVXPropulsion> Propulsion;
  std::shared_ptr<clsVXPropeller> Propeller;
  std::shared_ptr<clsVXPropellerSeries> PropellerSeries;
  std::shared_ptr<clsVXPropellerSizing> PropellerSizing;
  std::shared_ptr<clsVXEngine> Engine;
  std::shared_ptr<clsVXWaterjet> Waterjet;
  std::shared_ptr<clsVXSpeedPerformance> SpeedPerformance;
  std::shared_ptr<clsVXTaskList> TaskList;
};

// Which members a set is made of.
enum class SetKind {
  Primary,        // the open project
  ReferenceShip,  // RefShipResistance and RefShipPropulsion
  ReferenceProp,  // RefPropeller
  Compare,        // a second project overlaid on a graph
};

enum class Mode : int { Resistance = 0, Propulsion = 1 };

struct Application {
  ModelSet primary;
  ModelSet RefShipResistance;
  ModelSet RefShipPropulsion;
  ModelSet RefPropeller;
  std::unique_ptr<ModelSet> compare;  // created on demand by CompareProject()

  bool NeedCalculateResistance = true;
  bool NeedCalculatePropulsion = false;
  bool ProjectDirty = false;
  bool PropulsionSizingChanged = false;
  Mode CurrentMode = Mode::Resistance;

  // Reads a template project over a fresh project's defaults. Empty until the project reader
  // is installed; NewProject calls it when the options name an existing template.
  std::function<bool(const std::string& path)> LoadTemplateFile;
  // Options that NewProject consults.
  bool TemplateEnabled = false;
  std::string TemplateFile;

  // Receives the trace labels of NewProject ("mM:CNP01" ...); stores nothing by default.
  std::function<void(std::string_view)> Trace;
};

// The application state of the calling thread (one project per thread).
Application& App();

}  // namespace velmar
