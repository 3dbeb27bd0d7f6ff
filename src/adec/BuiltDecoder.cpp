#include "BuiltDecoder.h"

const char* builtDecoder() noexcept
{
    return PX_ADEC_PATH;
}
