#pragma once

#include <cstdio>
#include <cstdlib>

/** Ends the program where a reader does what it must not, in every build. */
#define FUZZ_CHECK(condition)                                                                                \
    do                                                                                                       \
    {                                                                                                        \
        if (!(condition))                                                                                    \
        {                                                                                                    \
            std::fprintf (stderr, "%s:%d: %s does not hold\n", __FILE__, __LINE__, #condition);              \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (false)
