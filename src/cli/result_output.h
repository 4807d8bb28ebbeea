// Numbers, texts and column lists of the machine-readable outputs (csv, json, JSON Lines)
// that calc, batch and sweep share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/data_class.h"

namespace velmar::cli {

// The shortest text that reads back to the same double ("0.0006", not
// "0.00059999999999999995"), '.' as the decimal separator; appended to `out`.
void AppendFull(std::string& out, double v);
std::string Full(double v);
// JSON has no infinity or NaN: such a cell is null.
std::string JsonNumber(double v);
void AppendJsonNumber(std::string& out, double v);
// A JSON string: quoted, with '"', '\\' and the control characters escaped.
std::string JsonString(std::string_view s);
void AppendJsonString(std::string& out, std::string_view s);
// A CSV cell: quoted (with doubled quotes) when it holds a comma, quote or line break.
std::string CsvText(std::string_view s);
// The unit label of a column in the current units; empty for a dimensionless one.
std::string UnitLabel(const FieldDesc& d, const clsVXUnits& units);
// Speed-table column names typed by the user, comma-separated. False (reported, exit code
// 2) on an unknown name or an empty list.
bool ParseColumns(const std::string& list, std::vector<int>& cols);

}  // namespace velmar::cli
