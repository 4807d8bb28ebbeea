// The validity ranges of the methods, one row per check id in id order: the parameter rows
// (the first is the speed row where there is one), then the rule letters in the order in
// which they run. Tolerances are x0.95 and x1.05 unless a row says otherwise.
#include "validation/method_ranges.h"

#include <iterator>

namespace velmar::validation {
namespace {

using enum Param;

constexpr RangeRow Row(Param p, Limit lo, Limit hi) { return RangeRow{p, lo, hi}; }
constexpr Limit MinFnc(double v) { return {Lim::MinFNC, v}; }
constexpr Limit kTL{Lim::TL};

// The rule letters as they stand in the table.
constexpr RuleRef b{Rule::b}, b0{Rule::b0}, B{Rule::B}, V{Rule::V}, K{Rule::K}, X{Rule::X}, O{Rule::O},
    G{Rule::G}, E{Rule::E}, N{Rule::N}, N1{Rule::N1}, S{Rule::S}, R{Rule::R}, R2{Rule::R2}, C2{Rule::C2},
    C3{Rule::C3}, W{Rule::W}, T{Rule::T}, I{Rule::I}, L{Rule::L}, Y{Rule::Y}, J{Rule::J}, P{Rule::P},
    Q{Rule::Q}, U{Rule::U}, Holtrop{Rule::Holtrop}, Pd{Rule::Pd}, Sh{Rule::Sh}, Pl{Rule::Pl}, Tw{Rule::Tw},
    Np{Rule::Np}, Nq{Rule::Nq}, Up{Rule::Up}, Tr{Rule::Tr}, Kb{Rule::Kb}, Sp{Rule::Sp}, Sd{Rule::Sd},
    Hs{Rule::Hs}, Hd{Rule::Hd}, NoTransomArea{Rule::NoTransomArea}, NoTransomStern{Rule::NoTransomStern},
    WaterjetOnly{Rule::WaterjetOnly}, Wa{Rule::Wa}, Wl{Rule::Wl}, Bn{Rule::Bn}, DefinitionPercentage{Rule::DefinitionPercentage},
    DefinitionSimple{Rule::DefinitionSimple}, DefinitionComponent{Rule::DefinitionComponent},
    ParameterUncertain{Rule::ParameterUncertain}, MethodUncertain{Rule::MethodUncertain};
constexpr RuleRef A(double below) { return {Rule::A, below}; }
constexpr RuleRef ALe(double atMost) { return {Rule::ALe, atMost}; }
constexpr RuleRef D(unsigned items) { return {Rule::D, 0.0, items}; }
constexpr RuleRef DIfSimple(unsigned items) { return {Rule::DSimpleDefinition, 0.0, items}; }
constexpr RuleRef Note(const char* text) { return {Rule::Note, 0.0, 0, text}; }

// Methods whose coefficients come from one source only say so, unless a later rule has more
// to say.
constexpr const char* kSingleSourceNote = "Note: Coefficients from a single source, unconfirmed.";

// Delft Series: CP/CWP is held to its range exactly.
constexpr RangeRow kDelftCpCwp = Row(CPCWP, 0.798, 0.842).Tol(1.0, 1.0).Fmt("0.000");

// clang-format off
constexpr MethodRange kRanges[] = {
    {0, "Holtrop",
     {{Row(FN, 0.06, Lim::FNH).Tol(0.95, 1.1), Row(CP, 0.55, 0.85), Row(LWLBWL, 3.9, 14.9), Row(BWLT, 2.1, 4.0),
       Row(Lambda, 0.01, Lim::LM).When(RowWhen::ResistanceMode)}},
     {{Holtrop}}},
    {1, "Fung (HSTS)",
     {{Row(FN, 0.15, MinFnc(0.9)).Tol(0.95, 1.1), Row(CVOL, 4.73, 10.6), Row(CP, 0.55, 0.72),
       Row(LWLBWL, 3.4, 12.1), Row(BWLT, 2.1, 6.9), Row(XCBLWL, 0.44, 0.51), Row(IE, 3.7, 26.0),
       Row(ATRAX, 0.0, 0.54).Z(), Row(BTRBWL, kTL, 0.95), Row(TTRT, kTL, 0.59), Row(CX, 0.59, 0.98)}},
     {{B, V, D(kDCX | kDIE | kDTransomBTR), R}}},
    {2, "Fung (CRTS)",
     {{Row(FN, 0.178, MinFnc(0.684)), Row(CVOL, 4.85, 11.27), Row(CP, 0.52, 0.7), Row(BWLT, 2.2, 5.2),
       Row(IE, 4.0, 20.0), Row(ABTAX, 0.0, 0.1), Row(ATRAX, 0.0, 0.4).Z(), Row(BTRBWL, kTL, 0.85),
       Row(TTRT, kTL, 0.42), Row(CX, 0.64, 1.0)}},
     {{D(kDCX | kDIE | kDTransomBTR | kDTransomTTR), R}}},
    {3, "Kostov",
     {{Row(FN, 0.1, 0.2).Tol(0.95, 1.0), Row(CB, 0.75, 0.83), Row(LWLBWL, 6.1, 7.4), Row(BWLT, 2.3, 3.1),
       Row(XCBLWL, 0.521, 0.545), Row(IE, 22.0, 43.0), Row(ABTAX, 0.0, 0.15)}},
     {{S, D(kDCX)}}},
    {4, "BSRA Series (Full)",
     {{Row(FN, 0.147, 0.235).Fmt("0.000"), Row(CVOL, 4.35, 6.54), Row(CB, 0.63, 0.78), Row(BWLT, 2.12, 3.96),
       Row(XCBLWL, 0.494, 0.548)}},
     {{b, S, T}}},
    {5, "BSRA Series (Light)",
     {{Row(FN, 0.15, 0.24).Fmt("0.000"), Row(CVOL, 5.01, 7.58), Row(CB, 0.6, 0.78), Row(BWLT, 3.44, 6.39),
       Row(XCBLWL, 0.479, 0.535)}},
     {{b, S, T}}},
    {6, "BSRA Series (Medium)",
     {{Row(FN, 0.148, 0.237).Fmt("0.000"), Row(CVOL, 4.65, 7.01), Row(CB, 0.62, 0.78), Row(BWLT, 2.62, 4.87),
       Row(XCBLWL, 0.491, 0.545)}},
     {{b, S, T}}},
    {7, "DeGroot (RB)",
     {{Row(FN, 0.3, MinFnc(1.05)), Row(CVOL, 4.67, 8.96), Row(LWLBWL, 3.53, 10.1), Row(BWLT, 2.72, 6.58),
       Row(CX, 0.56, 0.89), Row(ATRAX, 0.0, 0.3).Z()}},
     {{B, R2, D(kDCX)}}},
    {8, "DeGroot (HC)",
     {{Row(FN, 0.3, 1.5), Row(CVOL, 4.87, 8.94), Row(LWLBWL, 3.09, 5.79), Row(BWLT, 3.57, 8.05),
       Row(CX, 0.34, 0.67), Row(ATRAX, 0.17, 0.3).Z()}},
     {{B, C2, ALe(0.0), D(kDCX)}}},
    {9, "Delft Series (1)",
     {{Row(FN, 0.125, 0.45), Row(CVOL, 4.34, 5.14), Row(CP, 0.53, 0.6), Row(LWLBWL, 2.73, 3.64),
       Row(BWLT, 2.81, 5.35), Row(XCBLWL, 0.45, 0.5), Row(CWP, 0.65, 0.73), kDelftCpCwp}},
     {{K, B, T, D(kDCX), R}}},
    {10, "Delft Series (1/2)",
     {{Row(FN, 0.125, 0.45), Row(CVOL, 4.34, 6.99), Row(CP, 0.53, 0.6), Row(LWLBWL, 2.73, 4.5),
       Row(BWLT, 2.46, 12.89), Row(XCBLWL, 0.45, 0.5), Row(CWP, 0.65, 0.73), kDelftCpCwp}},
     {{K, B, T, D(kDCX), R}}},
    // A single parent form: equal limits, the tolerances alone give the rows their width.
    {11, "Delft Series (2)",
     {{Row(FN, 0.125, 0.6), Row(CVOL, 5.0, 6.99), Row(CP, 0.55, 0.55), Row(LWLBWL, 3.5, 4.5),
       Row(BWLT, 2.46, 12.89), Row(XCBLWL, 0.48, 0.48), Row(CWP, 0.66, 0.66), kDelftCpCwp}},
     {{K, B, T, D(kDCX), R}}},
    {12, "Delft Series (1/2/3)",
     {{Row(FN, 0.125, 0.45), Row(CVOL, 4.34, 7.51), Row(CP, 0.52, 0.6), Row(LWLBWL, 2.73, 5.0),
       Row(BWLT, 2.46, 19.32), Row(XCBLWL, 0.434, 0.5), Row(CWP, 0.58, 0.73), kDelftCpCwp}},
     {{K, B, T, D(kDCX), R}}},
    {13, "Delft Series (2/3)",
     {{Row(FN, 0.125, 0.75), Row(CVOL, 5.0, 7.51), Row(CP, 0.52, 0.58), Row(LWLBWL, 3.0, 5.0),
       Row(BWLT, 2.46, 19.32), Row(XCBLWL, 0.434, 0.481), Row(CWP, 0.58, 0.69), kDelftCpCwp}},
     {{K, B, T, D(kDCX), R}}},
    {14, "Hamburg EWB Series",
     {{Row(FN, 0.01, 0.2), Row(CVOL, 3.7, 5.1), Row(CP, 0.74, 0.8), Row(LWLBWL, 2.7, 4.7), Row(BWLT, 2.4, 10.0),
       Row(CX, 0.986, 0.997).Fmt("0.000"), Row(CWP, 0.85, 0.88)}},
     {{X, b, D(kDCX)}}},
    {15, "Jin (1988)",
     {{Row(FN, 0.4, MinFnc(1.0)).Tol(0.95, 1.1), Row(CVOL, 4.53, 8.74), Row(CP, 0.56, 0.77),
       Row(LWLBWL, 2.5, 8.5).Fmt("0.0"), Row(XCBLWL, 0.409, 0.515), Row(IE, 7.0, 28.0),
       Row(ATRAX, 0.0, 0.73).Z()}},
     {{B, D(kDCX | kDIE), R}}},
    // Reached from the estimate lists only: a full-form series without a speed row.
    {16, "Full-form series",
     {{Row(CB, 0.77, 0.842), Row(LWLBWL, 4.678, 6.757), Row(BWLT, 3.0, 4.75)}},
     {{MethodUncertain}}},
    {17, "Mercier",
     {{Row(FV, 1.0, Lim::FVM), Row(CVOL, 4.3, 8.9), Row(LWLBWL, 2.0, 7.8), Row(IE, 6.0, 65.0),
       Row(ATRAX, 0.0, 1.0).Z()}},
     {{B, E, D(kDCX | kDIE)}}},
    {18, "NTUA Series",
     {{Row(FN, 0.2, 1.1).Tol(0.95, 1.1), Row(CVOL, 6.2, 8.5), Row(CB, 0.34, 0.54), Row(LWLBWL, 4.3, 7.5),
       Row(BWLT, 3.2, 6.2), Row(XCBLWL, 0.35, 0.391), Row(IE, 9.0, 15.5), Row(ATRAX, 0.86, 1.0).Tol(0.95, 1.0).Z(),
       Row(BTRBWL, 0.9, 1.0).Tol(0.95, 1.0), Row(CX, 0.49, 0.81), Row(CWP, 0.76, 0.82)}},
     {{B, A(0.8)}}},
    {19, "Oortmerssen",
     {{Row(FN, 0.05, 0.5), Row(CP, 0.51, 0.69), Row(LWLBWL, 3.5, 6.3), Row(BWLT, 1.9, 3.4),
       Row(XCBLWL, 0.467, 0.537), Row(IE, 10.0, 38.0), Row(CX, 0.73, 0.97)}},
     {{Note(kSingleSourceNote), b0, O, D(kDCX), P, Q}}},
    {20, "Series 60",
     {{Row(FN, 0.148, 0.266).Fmt("0.000"), Row(CB, 0.59, 0.79), Row(LWLBWL, 5.59, 8.64), Row(BWLT, 2.5, 3.5),
       Row(XCBLWL, 0.484, 0.543)}},
     {{b0, T, P, Q}}},
    {21, "SSPA Cargo Series",
     {{Row(FN, 0.18, 0.3), Row(CVOL, 5.22, 7.1), Row(CB, 0.51, 0.7), Row(BWLT, 2.1, 3.0),
       Row(XCBLWL, 0.476, 0.525)}},
     {{b0, T, P, Q}}},
    {22, "Swift",
     {{Row(FN, 0.11, 0.18), Row(CVOL, 5.1, 8.74), Row(CB, 0.8, 0.92), Row(LWLBWL, 6.5, 10.0), Row(BWLT, 2.0, 6.0)}},
     {{b, S}}},
    {23, "Roach",
     {{Row(FN, 0.27, 0.41), Row(CVOL, 3.93, 5.23), Row(CP, 0.56, 0.68), Row(XCBLWL, 0.479, 0.498),
       Row(LWLBWL, 3.07, 4.47), Row(BWLT, 2.34, 3.2)}},
     {{b, T, D(kDCX)}}},
    {24, "USNA YP Series (RB)",
     {{Row(FN, 0.1, 0.6), Row(CVOL, 5.63, 6.94), Row(LWLBWL, 4.0, 5.29), Row(XCBLWL, 0.37, 0.489),
       Row(ATRAX, 0.4, 1.0).Z()}},
     {{B, R2, A(0.3)}}},
    {25, "USNA YP Series (HC)",
     {{Row(FN, 0.1, 0.6), Row(CVOL, 5.63, 6.94), Row(LWLBWL, 4.0, 5.29), Row(XCBLWL, 0.37, 0.489),
       Row(ATRAX, 0.4, 1.0).Z()}},
     {{B, C2, A(0.3)}}},
    {26, "Jin (1980)",
     {{Row(FN, 0.4, MinFnc(1.0)), Row(CP, 0.55, 0.85), Row(XCBLWL, 0.436, 0.5), Row(IE, 7.6, 26.6),
       Row(ATRAX, 0.0, 0.74).Z()}},
     {{B, D(kDCX | kDIE), R, L}}},
    {27, "NPL Series",
     {{Row(FV, 0.8, Lim::FVN).Tol(0.95, 1.1), Row(CVOL, Lim::CVL, Lim::CVH), Row(CB, 0.387, 0.407),
       Row(XCBLWL, 0.436, 0.48), Row(LWLBWL, 3.33, 7.5), Row(BWLT, 1.76, 10.77), Row(ATRAX, 0.51, 0.53).Z()}},
     {{b, I, D(kDCX), R}}},
    // Reached from the estimate lists only.
    {28, "Round-bilge high-speed displacement",
     {{Row(FV, 0.5, 3.5).Tol(0.95, 1.1)}},
     {{b, I, D(kDCX), R}}},
    {29, "Lahtiharju (RB)",
     {{Row(FV, 1.8, 3.2).Tol(0.95, 1.1), Row(CVOL, 4.47, 8.3), Row(LWLBWL, 3.33, 8.21), Row(BWLT, 1.72, 10.21),
       Row(XCBLWL, 0.436, 0.48), Row(ATRAX, 0.51, 0.53).Z(), Row(CX, 0.57, 0.89)}},
     {{b, I, D(kDCX), R}}},
    {30, "Lahtiharju (HC)",
     {{Row(FV, 1.8, 3.3).Tol(0.95, 1.1), Row(CVOL, 4.49, 6.81), Row(LWLBWL, 2.73, 5.43), Row(BWLT, 3.75, 7.54),
       Row(ATRAX, 0.43, 0.99).Z()}},
     {{b, A(0.3), D(kDCX), C3}}},
    {31, "Simple Ship",
     {{Row(FN, 0.05, 0.4), Row(CVOL, 4.0, 11.0)}},
     {{N, b0, Y, P, Q}}},
    // The row named BWL/T is valued by LWL/BWL, with the limits of BWL/T.
    {32, "UBC Series",
     {{Row(FN, 0.2, 0.43).Tol(0.95, 1.1), Row(CVOL, 3.0, 4.5), Row(CB, 0.53, 0.62), Row(LWLBWL, 2.6, 4.0),
       Row(BWLTasLWLBWL, 2.0, 3.0), Row(IE, 20.0, 30.0), Row(CX, 0.81, 0.88), Row(ATRAX, 0.22, 0.34).Z()}},
     {{b, D(kDCX), A(0.1)}}},
    {33, "Andersen",
     {{Row(FN, 0.05, 0.33).Tol(0.95, 1.1), Row(CVOL, 4.0, 6.0), Row(CB, 0.55, 0.85), Row(LWLBWL, 5.0, 8.0)}},
     {{G, D(kDCX), J, P}}},
    {34, "Savitsky",
     {{Row(FNB, Lim::FBL, Lim::FBH).Tol(0.95, 1.1), Row(XCGBPX, 0.6, 3.0),
       Row(Deadrise, 0.0, 30.0).Tol(1.0, 1.05).Fmt("0.0")}},
     {{b, D(kDXCG), W}}},
    {35, "Simple Planing",
     {{Row(FV, 1.0, 4.0)}},
     {{N1, b0, Y, P, U}}},
    {36, "Series 62",
     {{Row(FV, 1.0, 3.5), Row(APVOL, 4.25, 8.56), Row(XCGLP, 0.353, 0.443).Fmt("0.000"), Row(LPAP, 2.36, 6.72),
       Row(Deadrise, 13.0, 20.0).Fmt("0.0")}},
     {{b0, D(kDAP | kDLP), W, P, U}}},
    {37, "Series 65B",
     {{Row(FV, 1.0, 3.5), Row(APVOL, 4.75, 9.5), Row(XCGLP, 0.3, 0.38).Fmt("0.000"), Row(LPAP, 3.18, 6.36),
       Row(Deadrise, 21.0, 37.0).Fmt("0.0")}},
     {{b, D(kDAP | kDLP), W}}},
    // Prismatic coefficient ranges of the waterplane-area estimates.
    {38, "CP range (small ship)", {{Row(CP, 0.55, 0.8).Tol(1.0, 1.0).Fmt("0.000")}}, {}},
    {39, "CP range (cargo ship)", {{Row(CP, 0.6, 0.85).Tol(1.0, 1.0).Fmt("0.000")}}, {}},
    {40, "CP range (twin-screw)", {{Row(CP, 0.54, 0.82).Tol(1.0, 1.0).Fmt("0.000")}}, {}},
    {41, "Trawler form",
     {{Row(LWLBWL, 4.4, 5.8).Tol(1.0, 1.0), Row(BWLT, 2.0, 2.6).Tol(1.0, 1.0),
       Row(CB, 0.47, 0.6).Tol(1.0, 1.0).Fmt("0.000")}},
     {}},
    // Appendage drag.
    {42, "Percentage", {}, {{DefinitionPercentage}}, true},
    {43, "Radojcic (Simple Planing)",
     {{Row(SPEED, 0.0, Limit(Lim::Knots, 33.0)).Tol(1.0, 1.1).Fmt("0.0")}},
     {{DefinitionSimple, Pd, Sh, Pl, Tw}}, true},
    {44, "Blount (Simple Planing)", {{Row(FV, 1.0, 5.0).Tol(0.95, 1.1)}},
     {{DefinitionSimple, Sh, Pl, Tw}}, true},
    {45, "Fung (Simple)", {{Row(FN, 0.05, 0.7).Tol(0.95, 1.1)}},
     {{DefinitionSimple, Pd, Sh, Np, Tw, Tr}}, true},
    {46, "Holtrop (Component)", {{Row(FN, 0.1, 0.8).Tol(0.95, 1.1)}},
     {{DefinitionComponent, Kb, Sp, Np}}, true},
    {47, "Kirkman (Component)", {{Row(FV, 0.1, 5.0).Tol(0.95, 1.1)}},
     {{DefinitionComponent, Kb, Np, Sd}}, true},
    {48, "Hadler (Component)", {{Row(FV, 0.5, 4.0).Tol(0.95, 1.1)}},
     {{DefinitionComponent, Kb, Up, Sd}}, true},
    {49, "Teeters (Sailboat)", {{Row(FN, 0.05, 0.65).Tol(0.95, 1.1)}},
     {{DefinitionComponent, DIfSimple(kDCX), Nq, Sd}}, true},
    // Wind.
    {50, "Taylor", {}, {{Note("General use.")}}},
    {51, "Hughes", {}, {{Note("Based on tanker, cargo and passenger ships.")}}},
    {52, "Iwai", {}, {{Note("Based on tanker, cargo and passenger ships.")}}},
    // Seas.
    {53, "Small Naval Series",
     {{Row(FN, 0.24, 0.36), Row(CP, 0.55, 0.64), Row(LWLBWL, 4.0, 7.0), Row(BWLT, 2.8, 3.6), Row(CX, 0.8, 0.93),
       Row(CWP, 0.7, 0.8), Row(ATRAX, 0.028, 0.063).Fmt("0.000").Z(), Row(HSLWL, 0.029, 0.067).Fmt("0.000")}},
     {{Hs, NoTransomArea}}, true},
    {54, "Aertssen", {}, {{ParameterUncertain, Note("Container ships.")}}},
    // The planing rows stand for a planing data set, their round-hull counterparts otherwise.
    {55, "Hoggard",
     {{Row(FV, 0.6, 4.4), Row(VOLBp, 0.174, 1.27).When(RowWhen::PlaningSet),
       Row(LPBPX, 2.7, 6.4).When(RowWhen::PlaningSet), Row(Deadrise, 10.0, 24.0).Fmt("0.0").When(RowWhen::PlaningSet),
       Row(HSBPX, 0.12, 0.8).When(RowWhen::PlaningSet), Row(VOLB, 0.174, 1.27).When(RowWhen::NotPlaningSet),
       Row(LWLBWL, 2.7, 6.4).When(RowWhen::NotPlaningSet), Row(ATRAX, 0.4, 1.0).Z().When(RowWhen::NotPlaningSet),
       Row(HSBPX, 0.12, 0.8).When(RowWhen::NotPlaningSet)}},
     {{Hs, Note("Note: For general use.")}}, true},
    {56, "Fridsma Series",
     {{Row(FNLP, 0.6, 1.8), Row(CVOLp, 4.85, 6.59), Row(LPBPX, 3.0, 5.0), Row(Deadrise, 10.0, 30.0).Fmt("0.0"),
       Row(HSBPX, 0.2, 0.7)}},
     {{Hs, Note("Note: For general use.")}}, true},
    {57, "Workboat",
     {{Row(FN, 0.08, 0.3).Tol(0.95, 1.1), Row(CVOL, 3.7, 4.8), Row(LWLBWL, 3.3, 4.6), Row(BWLT, 2.4, 3.2),
       Row(CVP, 0.63, 0.73).Fmt("0.000"), Row(ATRAX, 0.11, 0.26).Fmt("0.000").Z(),
       Row(HSLWL, 0.023, 0.11).Fmt("0.000")}},
     {{Hs}}, true},
    // Shallow water and channels.
    {58, "Landweber",
     {{Row(FNH, 0.1, 1.2).Tol(1.0, 1.0).Fmt("0.000"), Row(AXRH, 0.0, 1.6).Tol(1.0, 1.0).Fmt("0.000")}},
     {{Hd}}, true},
    {59, "Schlichting",
     {{Row(FNH, 0.1, 1.2).Tol(1.0, 1.0).Fmt("0.000"), Row(AXH, 0.0, 1.1).Tol(1.0, 1.0).Fmt("0.000")}},
     {{Hd}}, true},
    {60, "Sturtzel-Graff",
     {{Row(FNH, 0.1, 1.2).Tol(1.0, 1.0).Fmt("0.000"), Row(CVOL, 5.6, 8.3), Row(CB, 0.3, 0.5), Row(LWLBWL, 5.0, 7.6),
       Row(BWLT, 3.0, 4.5)}},
     {{Hd, NoTransomStern}}, true},
    // Hull-propulsor interaction, the methods without a hull drag counterpart.
    {61, "Simple Waterjet", {{Row(FV, 1.0, 5.0).Tol(1.0, 1.0)}}, {{WaterjetOnly}}},
    {62, "Simple Towboat", {{Row(FN, 0.05, 0.4), Row(CB, 0.5, 0.75), Row(BWLT, 4.0, 9.0)}},
     {{Note("Note: Based on barge train towboats."), P}}},
    {63, "Simple Sailboat", {{Row(FN, 0.05, 0.4).Tol(0.95, 1.1), Row(CVOL, 4.7, 5.6)}},
     {{Note("Note: Based on sailboats."), P, Q}}},
    {64, "Blount/Fox", {{Row(FV, 1.0, 5.0).Tol(0.95, 1.1)}},
     {{Note("Note: Based on twin-screw planing hulls."), P, U}}},
    // Shallow-water ranges without a method in the lists.
    {65, "Shallow water (full form)",
     {{Row(FNH, 0.3, 0.7).Tol(1.0, 1.0), Row(LWLBWL, 5.5, 6.8), Row(BWLT, 2.3, 3.7), Row(CB, 0.44, 0.83),
       Row(HT, 1.25, 6.0), Row(LWLH, 6.0, 12.0).Fmt("0.0")}},
     {{Hd}}, true},
    {66, "Shallow water (depth Froude number)", {{Row(FNH, 0.4, 0.9).Tol(1.0, 1.0)}}, {{Hd}}, true},
    {67, "Volume ratio", {{Row(FN, 0.0, 0.6).Tol(1.0, 1.0), Row(VOLBL2, 0.015, 0.055).Tol(1.0, 1.0).Fmt("0.000")}}, {}},
    // Wind methods of the speed-trial procedure: their data sets publish no parameter ranges,
    // so the rows ask only for the windage they need.
    {68, "Fujiwara (ITTC)", {},
     {{Note("Note: Longitudinal wind force regression of the speed-trial procedure."), Wl, Wa}}},
    {69, "Isherwood", {}, {{Note("Note: Merchant ships of the 1960s and 1970s. Coefficients from a single source."), Wl, Wa}}},
    {70, "Blendermann", {}, {{Note(kSingleSourceNote), Wa}}},
    {71, "ITTC data set", {},
     {{Note("Note: Wind-tunnel data of the chosen ship type; four sets corroborated, the others from a single source."),
       Wa}}},
    // Wave methods of the speed-trial procedure: head seas within 45 degrees of the bow, and for
    // STAWAVE-1 a wave height up to 2.25 sqrt(LWL/100) m.
    {72, "STAWAVE-1",
     {{Row(WaveAngle, 0.0, 45.0).Tol(1.0, 1.0).Fmt("0.0"), Row(HSSqrtL, 0.0, 2.25).Tol(1.0, 1.0)}},
     {{Hs, Note("Note: Bow reflection only; heave and pitch must be negligible.")}}, true},
    {73, "STAWAVE-2", {{Row(WaveAngle, 0.0, 45.0).Tol(1.0, 1.0).Fmt("0.0")}},
     {{Hs, Note("Note: Fitted for conventional ships.")}}, true},
    {74, "Kwon", {{Row(CB, 0.55, 0.85).Tol(1.0, 1.0)}},
     {{Bn, Note("Note: Speed loss at constant power, taken as added drag by the admiralty relation.")}}, true},
    // Shallow water.
    {75, "Lackenby", {}, {{Hd, Note(kSingleSourceNote)}}, true},
    {76, "Raven (ITTC)", {{Row(FNH, 0.0, 1.0).Tol(1.0, 1.0).Fmt("0.000")}}, {{Hd, Note(kSingleSourceNote)}}, true},
    {77, "Karpov", {}, {{Hd, Note(kSingleSourceNote)}}, true},
};
// clang-format on

constexpr bool InIdOrder() {
  for (size_t i = 0; i < std::size(kRanges); ++i)
    if (kRanges[i].checkId != static_cast<int>(i)) return false;
  return true;
}
static_assert(std::size(kRanges) == kLastCheckId + 1 && InIdOrder(), "one row per check id, in id order");

}  // namespace

const MethodRange* FindMethodRange(int checkId) {
  if (checkId < 0 || checkId > kLastCheckId) return nullptr;
  return &kRanges[checkId];
}

}  // namespace velmar::validation
