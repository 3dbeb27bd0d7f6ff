# Settings of every target: language, position independence, sanitizers, compiler cache, linker.

set (CMAKE_CXX_STANDARD 20)
set (CMAKE_CXX_STANDARD_REQUIRED ON)
set (CMAKE_CXX_EXTENSIONS OFF)
set (CMAKE_POSITION_INDEPENDENT_CODE ON)
set (CMAKE_CXX_VISIBILITY_PRESET hidden)
set (CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# -O2 with the vectoriser's full cost model: the loops over samples are written for it. Line tables only,
# so that a profile has names and a build stays small.
set (CMAKE_CXX_FLAGS_RELEASE "-O2 -ftree-vectorize -g1 -DNDEBUG")
if (CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    string (APPEND CMAKE_CXX_FLAGS_RELEASE " -fvect-cost-model=dynamic")
endif ()
set (CMAKE_C_FLAGS_RELEASE "-O2 -g1 -DNDEBUG")
set (CMAKE_CXX_FLAGS_DEBUG "-Og -g1 -DDEBUG=1 -D_DEBUG=1")
# Looked at, never run: the preset "clang". Without assertions, whose reports allocate.
set (CMAKE_CXX_FLAGS_CHECK "-DNDEBUG")
set (CMAKE_C_FLAGS_DEBUG "-Og -g1 -DDEBUG=1 -D_DEBUG=1")

if (PX_SANITIZE)
    add_compile_options (-fsanitize=${PX_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options (-fsanitize=${PX_SANITIZE})
endif ()

if (CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    # A constructor in one of JUCE's headers fits no other; nobody calls it, so it need not be looked into.
    add_compile_options ($<$<COMPILE_LANGUAGE:CXX>:-fdelayed-template-parsing> -Wno-delayed-template-parsing-in-cxx20)
endif ()

find_program (PX_CCACHE ccache)
if (PX_CCACHE)
    # The build folder may move and the compiler's date macros are not used: both would only cost cache hits.
    set (launcher ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=time_macros,pch_defines
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_PCH_EXTSUM=1 ${PX_CCACHE})
    set (CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set (CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif ()

find_program (PX_LLD ld.lld)
if (PX_LLD)
    add_link_options (-fuse-ld=lld)
endif ()
