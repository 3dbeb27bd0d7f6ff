#pragma once

/** Full name of the similarity library in the build folder, for tests and benchmarks, which run from there. */
const char* builtSimilarity() noexcept;
