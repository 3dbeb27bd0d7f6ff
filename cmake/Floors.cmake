# Every folder of src/ is one library. Its headers are reached as "folder/Name.h", and only by targets that link it:
# each library brings an include folder of its own that holds nothing but a link to its sources. So an include
# against the order of the floors does not compile.

set (PX_WARNINGS -Wall -Wextra -Werror)

# px_expose (TARGET FOLDER): makes the sources of FOLDER includable as "<last name of FOLDER>/..." through TARGET.
function (px_expose target folder scope)
    get_filename_component (name "${folder}" NAME)
    set (view "${CMAKE_BINARY_DIR}/floors/${name}")
    file (MAKE_DIRECTORY "${view}")
    file (CREATE_LINK "${folder}" "${view}/${name}" SYMBOLIC)
    target_include_directories (${target} ${scope} "${view}")
endfunction ()

# px_library (NAME SOURCES ... LINK ...): the library px_NAME of the folder that calls it.
function (px_library name)
    cmake_parse_arguments (ARG "" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
    add_library (px_${name} STATIC ${ARG_SOURCES})
    px_expose (px_${name} "${CMAKE_CURRENT_SOURCE_DIR}" PUBLIC)
    target_compile_options (px_${name} PRIVATE ${PX_WARNINGS})
    target_link_libraries (px_${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
endfunction ()
