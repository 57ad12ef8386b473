// While fuzzing, an input that a target refuses is as good as any other.
#include "target.h"

int refused(const std::string& /*why*/) { return 0; }
