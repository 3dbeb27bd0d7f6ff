# The headers that most sources begin with, read once: JUCE's and the standard library's for every target of ours,
# GoogleTest's too for the tests. A source still includes what it uses: PX_PRECOMPILED_HEADERS=OFF shows
# what is missing.

option (PX_PRECOMPILED_HEADERS "Read JUCE's and the standard headers once" ON)

set (px_standard_headers <algorithm> <array> <atomic> <bit> <charconv> <cmath> <complex> <cstdint> <cstdio> <cstring>
    <filesystem> <functional> <limits> <map> <memory> <mutex> <numbers> <numeric> <optional> <random> <set> <span>
    <string> <string_view> <thread> <utility> <vector>)
set (px_juce_headers <juce_audio_formats/juce_audio_formats.h> <juce_audio_processors/juce_audio_processors.h>
    <juce_gui_basics/juce_gui_basics.h>)

# gcc takes a precompiled header only with the position independence that it was made with: programs get the libraries'.
set (CMAKE_CXX_COMPILE_OPTIONS_PIE ${CMAKE_CXX_COMPILE_OPTIONS_PIC})

# px_precompiled (NAME HEADERS ... LINK ...): the target whose precompiled headers others share.
function (px_precompiled name)
    cmake_parse_arguments (ARG "" "" "HEADERS;LINK" ${ARGN})
    set (source "${CMAKE_BINARY_DIR}/precompiled/${name}.cpp")
    file (CONFIGURE OUTPUT "${source}" CONTENT "" @ONLY)
    add_library (${name} OBJECT "${source}")
    target_link_libraries (${name} PRIVATE ${ARG_LINK})
    target_precompile_headers (${name} PRIVATE ${ARG_HEADERS})
    # gcc never writes the same file twice, so ccache is given a sum of what goes in instead of the file.
    string (SHA256 sum "${CMAKE_CXX_COMPILER_VERSION};${JUCE_VERSION};${GTest_VERSION};${ARG_HEADERS}")
    file (CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${name}.dir/cmake_pch.hxx.gch.sum" CONTENT "${sum}" @ONLY)
endfunction ()

# px_use_precompiled (TARGET NAME): begins each of a target's sources with the headers of NAME.
function (px_use_precompiled target name)
    if (PX_PRECOMPILED_HEADERS)
        target_precompile_headers (${target} REUSE_FROM ${name})
    endif ()
endfunction ()

px_precompiled (px_headers HEADERS ${px_standard_headers} ${px_juce_headers} LINK juce_shared)
