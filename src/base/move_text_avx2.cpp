#include "base/move_text_blocks.h"
