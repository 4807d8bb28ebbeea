// Field list as named accessors (see data_class.h). A quantity reads as X(unit) and writes
// as X(unit, value); other fields read as X() and write as X(value).
#define VX_COMMON_ACCESSORS(N)                                                          \
  std::string N##Formatted(int unit = ::velmar::kCurrent) const {                       \
    return FormattedOf(::velmar::FieldId(Field::N), unit);                              \
  }                                                                                     \
  std::string N##FieldName() const { return FieldNameOf(::velmar::FieldId(Field::N)); } \
  std::string N##Symbol() const { return SymbolOf(::velmar::FieldId(Field::N)); }       \
  std::string N##SymbolDescription() const { return SymbolDescriptionOf(::velmar::FieldId(Field::N)); }
#define VX_QTY(N, FAM, ...)                                                           \
  double N(int unit) const { return Read(::velmar::FieldId(Field::N), unit); }        \
  void N(int unit, double value) { Write(::velmar::FieldId(Field::N), unit, value); } \
  VX_COMMON_ACCESSORS(N)
#define VX_REAL(N, ...)                                                                   \
  double N() const { return Read(::velmar::FieldId(Field::N)); }                          \
  void N(double value) { Write(::velmar::FieldId(Field::N), ::velmar::kCurrent, value); } \
  VX_COMMON_ACCESSORS(N)
#define VX_INT(N, ...)                                                                 \
  int N() const { return static_cast<int>(Read(::velmar::FieldId(Field::N))); }        \
  void N(int value) { Write(::velmar::FieldId(Field::N), ::velmar::kCurrent, value); } \
  VX_COMMON_ACCESSORS(N)
#define VX_ENUM(N, LABELS, ...)                                                                      \
  int N() const { return static_cast<int>(Read(::velmar::FieldId(Field::N))); }                      \
  void N(int value) { Write(::velmar::FieldId(Field::N), ::velmar::kCurrent, value); }               \
  std::string N##Label(int index = -1) const { return LabelOf(::velmar::FieldId(Field::N), index); } \
  std::string N##FieldName() const { return FieldNameOf(::velmar::FieldId(Field::N)); }
#define VX_TEXT(N, ...)                                                                 \
  const std::string& N() const { return TextOf(::velmar::FieldId(Field::N)); }          \
  void N(std::string value) { SetText(::velmar::FieldId(Field::N), std::move(value)); } \
  std::string N##FieldName() const { return FieldNameOf(::velmar::FieldId(Field::N)); }
