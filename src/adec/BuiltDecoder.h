#pragma once

/** Full name of the decoder library in the build folder, for tests and benchmarks, which run from there. */
const char* builtDecoder() noexcept;
