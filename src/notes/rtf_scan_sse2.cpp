#if !defined(__AVX2__)
#include "notes/rtf_scan_blocks.h"
#endif
