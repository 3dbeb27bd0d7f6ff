#include "BuiltSimilarity.h"

const char* builtSimilarity() noexcept
{
    return PX_SIMILARITY_PATH;
}
