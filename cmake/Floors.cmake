# Every folder of src/ is one library. Its headers are reached as "folder/Name.h", and only by targets that link it:
# each library brings an include folder of its own that holds nothing but a link to its sources. So an include
# against the order of the floors does not compile.

set (PX_WARNINGS -Wall -Wextra -Werror)
if (CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    # The compiler looks into functions marked PX_AUDIO_THREAD and into all that they call; scripts/check-audio-thread
    # counts the calls that it cannot follow. libstdc++ 12 calls functions that clang 22 finds deprecated.
    list (APPEND PX_WARNINGS $<$<COMPILE_LANGUAGE:CXX>:-Wfunction-effects> -Wno-error=function-effects
        -Wno-deprecated-declarations)
endif ()

# px_expose (TARGET FOLDER): makes the sources of FOLDER includable as "<last name of FOLDER>/..." through TARGET.
function (px_expose target folder scope)
    get_filename_component (name "${folder}" NAME)
    set (view "${CMAKE_BINARY_DIR}/floors/${name}")
    file (MAKE_DIRECTORY "${view}")
    file (CREATE_LINK "${folder}" "${view}/${name}" SYMBOLIC)
    target_include_directories (${target} ${scope} "${view}")
endfunction ()

# px_expose_room (TARGET FOLDER ROOM): the same with one sub-folder, as "<last name of FOLDER>/ROOM/...".
function (px_expose_room target folder room scope)
    get_filename_component (name "${folder}" NAME)
    set (view "${CMAKE_BINARY_DIR}/floors/${name}.${room}")
    file (MAKE_DIRECTORY "${view}/${name}")
    file (CREATE_LINK "${folder}/${room}" "${view}/${name}/${room}" SYMBOLIC)
    target_include_directories (${target} ${scope} "${view}")
endfunction ()

# px_library (NAME [ROOM sub-folder] SOURCES ... LINK ...): the library px_NAME of the folder that calls it, or of one of
# its sub-folders, which then sees only itself and what it links.
function (px_library name)
    cmake_parse_arguments (ARG "" "ROOM" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
    if (ARG_ROOM)
        list (TRANSFORM ARG_SOURCES PREPEND "${ARG_ROOM}/")
    endif ()
    add_library (px_${name} STATIC ${ARG_SOURCES})
    if (ARG_ROOM)
        px_expose_room (px_${name} "${CMAKE_CURRENT_SOURCE_DIR}" ${ARG_ROOM} PUBLIC)
    else ()
        px_expose (px_${name} "${CMAKE_CURRENT_SOURCE_DIR}" PUBLIC)
    endif ()
    target_compile_options (px_${name} PRIVATE ${PX_WARNINGS})
    px_use_precompiled (px_${name} px_headers)
    target_link_libraries (px_${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
endfunction ()
