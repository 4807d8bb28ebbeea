#include "core/application.h"
int main() { return 0; }
