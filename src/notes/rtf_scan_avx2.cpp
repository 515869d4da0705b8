// Compiled for AVX2, and called on processors that have it. It must not use anything that other files define inline
// and that is more than a few instructions: the linker keeps one copy for all.
#include "notes/rtf_scan_blocks.h"
