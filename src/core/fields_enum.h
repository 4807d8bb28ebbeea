// Field list as enumerators (see data_class.h).
#define VX_QTY(N, FAM, ...) N,
#define VX_REAL(N, ...) N,
#define VX_INT(N, ...) N,
#define VX_ENUM(N, LABELS, ...) N,
#define VX_TEXT(N, ...) N,
