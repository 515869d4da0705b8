#if !defined(__AVX2__)
#include "base/move_text_blocks.h"
#endif
