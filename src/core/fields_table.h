// Field list as FieldDesc initialisers (see data_class.h).
#define VX_QTY(N, FAM, ...) \
  ::velmar::FieldDesc{      \
      .name = #N, .kind = ::velmar::FieldKind::Quantity, .family = ::velmar::UnitFamily::FAM, __VA_ARGS__},
#define VX_REAL(N, ...) ::velmar::FieldDesc{.name = #N, .kind = ::velmar::FieldKind::Real, __VA_ARGS__},
#define VX_INT(N, ...) ::velmar::FieldDesc{.name = #N, .kind = ::velmar::FieldKind::Int, __VA_ARGS__},
#define VX_ENUM(N, LABELS, ...) \
  ::velmar::FieldDesc{.name = #N, .kind = ::velmar::FieldKind::Enum, .labels = &LABELS, __VA_ARGS__},
#define VX_TEXT(N, ...) ::velmar::FieldDesc{.name = #N, .kind = ::velmar::FieldKind::Text, __VA_ARGS__},
