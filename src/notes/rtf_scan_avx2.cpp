#include "notes/rtf_scan_blocks.h"
