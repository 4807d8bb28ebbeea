// The propeller as an IGES surface model for a CAD system: the fixed 80-column card form with
// Start, Global, Directory Entry, Parameter Data and Terminate sections; every blade's face and
// back and the hub as rational B-spline surfaces (entity 128), in the propeller length unit.
#pragma once

#include <ctime>
#include <filesystem>
#include <string>

#include "propulsion/blade_geometry.h"

namespace velmar {

class clsVXPropeller;
class clsVXPropulsion;

// Texts of the export, as the program shows them.
inline constexpr const char* kIGESDialogTitle = "Export propeller CAD shape";
inline constexpr const char* kIGESFileFilter = "IGES (*.igs)";
inline constexpr const char* kIGESStatusText = "Exporting propeller CAD shape.";

// Why the propeller cannot be exported, tested in this order (type, propulsor, diameter, blade
// count, then pitch and area ratio); empty when it can.
std::string CheckPropellerForIGES(const clsVXPropeller& propeller, const clsVXPropulsion& propulsion);

// The blade input of the export from the propeller's data, in its own length unit: rake and
// hub of the propeller where it holds them, else the Wageningen B-series' 15 degrees and 0.167.
BladeGeometryInput IGESBladeInput(const clsVXPropeller& propeller);

struct IGESExportResult {
  bool ok = false;
  std::string message;  // why the file was not written, in the product's words
  int bladeSurfaces = 0, hubSurfaces = 0;
};

// The whole file as text. `unitIndex` is the propeller length unit (0 ft, 1 m, 2 in, 3 mm) the
// coordinates are in; `stamp` the date written in the Global section.
std::string BuildPropellerIGES(const BladeGeometryInput& input, int unitIndex, const std::string& fileName,
                               std::time_t stamp, IGESExportResult* counts = nullptr);

// Builds the file and writes it atomically; the caller checks the data first.
IGESExportResult ExportPropellerIGES(const std::filesystem::path& path, const BladeGeometryInput& input,
                                     int unitIndex, std::time_t stamp = std::time(nullptr));

}  // namespace velmar
