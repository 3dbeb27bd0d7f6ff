# Rules of `cmake --install`, and of the Debian package that CPack makes; scripts/package.sh does both.
#
# The program, its decoder, similarity library, scanner, languages and manual lie in one folder, where each looks for the others beside
# itself. Plug-ins hold links to those, so that a host that searches for plug-ins meets each once.

include (GNUInstallDirs)

set (home lib/platterdex/bin) # one folder deeper than the loader looks
set (companions adec.so AudioGenSDK.so languages manual platterdex-scanner)

install (TARGETS platterdex px_scanner adec similarity RUNTIME DESTINATION "${home}" LIBRARY DESTINATION "${home}")
install (DIRECTORY "${PX_LANGUAGES_DIR}/" DESTINATION "${home}/languages")
install (DIRECTORY "${PROJECT_SOURCE_DIR}/docs/manual/" DESTINATION "${home}/manual")

# px_install_link (TARGET LINK): LINK leads to TARGET, both from the prefix on.
function (px_install_link target link)
    get_filename_component (folder "/${link}" DIRECTORY)
    file (RELATIVE_PATH target "${folder}" "/${target}")
    install (CODE "
        set (link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${link}\")
        get_filename_component (folder \"\${link}\" DIRECTORY)
        file (MAKE_DIRECTORY \"\${folder}\")
        file (CREATE_LINK \"${target}\" \"\${link}\" SYMBOLIC)
        list (APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${link}\")")
endfunction ()

px_install_link ("${home}/platterdex" "${CMAKE_INSTALL_BINDIR}/platterdex")

# Folders that hosts search, whatever the machine's own library folder is.
install (FILES "${CMAKE_BINARY_DIR}/plugins/Platterdex.so" DESTINATION lib/vst/platterdex)
set (bundles "vst3/Platterdex.vst3/Contents/${JUCE_TARGET_ARCHITECTURE}-linux")
install (FILES "${CMAKE_BINARY_DIR}/plugins/Platterdex.vst3/Contents/${JUCE_TARGET_ARCHITECTURE}-linux/Platterdex.so"
    DESTINATION "lib/${bundles}")
if (TARGET Platterdex_LV2)
    # The linker's own folder, which holds the bundle and nothing else: the one in plugins has copies of the companions.
    install (DIRECTORY "$<TARGET_FILE_DIR:Platterdex_LV2>" DESTINATION lib/lv2 USE_SOURCE_PERMISSIONS)
    list (APPEND bundles lv2/Platterdex.lv2)
endif ()
foreach (folder vst/platterdex ${bundles})
    foreach (companion IN LISTS companions)
        px_install_link ("${home}/${companion}" "lib/${folder}/${companion}")
    endforeach ()
endforeach ()

# The man page and the shell's completion say what the program's own --help says, so the program is asked.
set (described "${CMAKE_BINARY_DIR}/described")
if (NOT PX_SANITIZE)
    add_custom_command (OUTPUT "${described}/platterdex.1.gz" "${described}/platterdex"
        COMMAND "${PROJECT_SOURCE_DIR}/scripts/describe-program" $<TARGET_FILE:platterdex> "${described}"
        DEPENDS platterdex "${PROJECT_SOURCE_DIR}/scripts/describe-program"
        VERBATIM)
    add_custom_target (describe_program ALL DEPENDS "${described}/platterdex.1.gz")
    install (FILES "${described}/platterdex.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install (FILES "${described}/platterdex" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
endif ()

set (desktop "${PROJECT_SOURCE_DIR}/resources/desktop")
install (FILES "${desktop}/platterdex.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install (FILES "${desktop}/net.tonal_yard.platterdex.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install (FILES "${desktop}/platterdex.svg" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
find_program (PX_RSVG_CONVERT rsvg-convert)
if (PX_RSVG_CONVERT)
    foreach (size 16 24 32 48 64 128 256 512)
        set (icon "${described}/icons/${size}/platterdex.png")
        add_custom_command (OUTPUT "${icon}"
            COMMAND "${CMAKE_COMMAND}" -E make_directory "${described}/icons/${size}"
            COMMAND "${PX_RSVG_CONVERT}" -w ${size} -h ${size} -o "${icon}" "${desktop}/platterdex.svg"
            DEPENDS "${desktop}/platterdex.svg"
            VERBATIM)
        list (APPEND icons "${icon}")
        install (FILES "${icon}" DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps")
    endforeach ()
    add_custom_target (icons ALL DEPENDS ${icons})
endif ()

install (CODE "
    file (MAKE_DIRECTORY \"${described}\")
    execute_process (COMMAND gzip -9nc \"${desktop}/changelog\" OUTPUT_FILE \"${described}/changelog.gz\"
        COMMAND_ERROR_IS_FATAL ANY)")
install (FILES "${described}/changelog.gz" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/platterdex")
install (FILES "${desktop}/copyright" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/platterdex")

set (CPACK_GENERATOR DEB)
set (CPACK_PACKAGE_NAME platterdex)
set (CPACK_PACKAGE_VENDOR "Tonal-Yard")
set (CPACK_PACKAGE_CONTACT "Platterdex maintainers <maintainers@platterdex.example>")
set (CPACK_PACKAGE_DESCRIPTION_SUMMARY "four-deck DJ system, application and plug-in")
set (CPACK_PACKAGE_DESCRIPTION
"Platterdex mixes, scratches and samples on four decks. It matches beats, runs
effects, follows control records and MIDI controllers, and keeps the record
box. It comes as an application, as a plug-in in VST 2, VST3 and LV2, and as
a program that renders sets without a window.")
set (CPACK_PACKAGING_INSTALL_PREFIX /usr)
set (CPACK_STRIP_FILES ON)
set (CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set (CPACK_DEBIAN_PACKAGE_SECTION sound)
set (CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Besides what is linked: a font for foreign letters, and what JUCE opens by name.
set (CPACK_DEBIAN_PACKAGE_DEPENDS
    "fonts-dejavu-core, libx11-6, libxcursor1, libxext6, libxinerama1, libxrandr2")
set (CPACK_DEBIAN_PACKAGE_RECOMMENDS "jackd2 | pipewire-jack")
set (CPACK_DEBIAN_COMPRESSION_TYPE xz)
set (CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include (CPack)
