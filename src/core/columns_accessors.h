// Column list of the speed table as row accessors (see data_class.h). A row index of -1
// stands for the current row (SpeedIndex). Quantities read as X(row, unit) and write as
// X(row, unit, value); dimensionless columns read as X(row) and write as X(row, value); check
// columns (VX_INT) are 16-bit codes: 0 in order, 1 warning, 2 severe.
#define VX_COMMON_ACCESSORS(N)                                                                      \
  std::string N##Formatted(int row) const { return FormattedOf(row, ::velmar::FieldId(Field::N)); } \
  std::string N##Symbol() const { return Column(::velmar::FieldId(Field::N)).symbol; }              \
  std::string N##SymbolDescription() const { return Column(::velmar::FieldId(Field::N)).description; }
#define VX_QTY(N, FAM, ...)                                                                         \
  double N(int row, int unit) const { return Read(row, ::velmar::FieldId(Field::N), unit); }        \
  void N(int row, int unit, double value) { Write(row, ::velmar::FieldId(Field::N), unit, value); } \
  VX_COMMON_ACCESSORS(N)
#define VX_REAL(N, ...)                                                                                 \
  double N(int row) const { return Read(row, ::velmar::FieldId(Field::N), ::velmar::kCurrent); }        \
  void N(int row, double value) { Write(row, ::velmar::FieldId(Field::N), ::velmar::kCurrent, value); } \
  VX_COMMON_ACCESSORS(N)
#define VX_INT(N, ...)                                                                   \
  int N(int row) const {                                                                 \
    return static_cast<int>(Read(row, ::velmar::FieldId(Field::N), ::velmar::kCurrent)); \
  }                                                                                      \
  void N(int row, int value) { Write(row, ::velmar::FieldId(Field::N), ::velmar::kCurrent, value); }
#define VX_ENUM(N, LABELS, ...) static_assert(false, "the speed table has no enumerations");
#define VX_TEXT(N, ...) static_assert(false, "the speed table has no texts");
