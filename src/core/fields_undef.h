// Ends a field list (see data_class.h).
#undef VX_QTY
#undef VX_REAL
#undef VX_INT
#undef VX_ENUM
#undef VX_TEXT
#undef VX_COMMON_ACCESSORS
