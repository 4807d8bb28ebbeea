// Shared constants of the program. Pi and the degree factor are these literal values on
// purpose: every published figure of the program was computed with them.
#pragma once

namespace velmar {

inline constexpr double DegToRad = 0.01745329252;
inline constexpr double Pi = 3.14159265358979;
inline constexpr double GravityFt = 32.174;              // ft/s2
inline constexpr double GravitySI = 9.80665;             // m/s2
inline constexpr double StdDensityFresh = 1.9384;        // slug/ft3 at 59 degF
inline constexpr double StdDensitySalt = 1.9905;         // slug/ft3 at 59 degF
inline constexpr double StdViscosityFresh = 1.22603e-5;  // ft2/s at 59 degF
inline constexpr double StdViscositySalt = 1.27908e-5;   // ft2/s at 59 degF

// Indentation of every field caption in the entry tables.
inline constexpr const char* FieldIndent = "  ";

// Markers the spline and the station code hand back for "no value".
inline constexpr double kFreeEnd = -99999.0;

}  // namespace velmar
