# JUCE's modules, compiled once into one static library that every target shares.

find_package (JUCE CONFIG REQUIRED)
find_package (PkgConfig REQUIRED)
pkg_check_modules (JUCE_CODECS REQUIRED IMPORTED_TARGET libpng libjpeg flac vorbis vorbisfile vorbisenc ogg zlib)

add_library (juce_shared STATIC)
target_link_libraries (juce_shared
    PRIVATE
        juce::juce_audio_utils
        juce::juce_gui_extra
    PUBLIC
        PkgConfig::JUCE_CODECS)
target_compile_definitions (juce_shared
    PUBLIC
        JUCE_WEB_BROWSER=0
        JUCE_USE_CURL=0
        JUCE_VST3_CAN_REPLACE_VST2=0
        JUCE_PLUGINHOST_VST=1
        JUCE_JACK=1
        JUCE_JACK_CLIENT_NAME="Platterdex"
        JUCE_ALSA=1
        JUCE_MODAL_LOOPS_PERMITTED=1
        JUCE_DISPLAY_SPLASH_SCREEN=0
        JUCE_REPORT_APP_USAGE=0
        JUCE_STRICT_REFCOUNTEDPOINTER=1
        JUCE_USE_MP3AUDIOFORMAT=1
    INTERFACE
        $<TARGET_PROPERTY:juce_shared,COMPILE_DEFINITIONS>)

# Hosting of VST3 and LV2, inside this one source: no header of ours looks at these two, so no other object needs them.
get_target_property (juce_module_sources juce::juce_audio_processors INTERFACE_SOURCES)
list (FILTER juce_module_sources INCLUDE REGEX "juce_audio_processors[a-z0-9_]*\\.cpp$")
set_property (SOURCE ${juce_module_sources} APPEND PROPERTY COMPILE_DEFINITIONS
    JUCE_PLUGINHOST_VST3=1 JUCE_PLUGINHOST_LV2=1)
target_include_directories (juce_shared SYSTEM
    INTERFACE $<TARGET_PROPERTY:juce_shared,INCLUDE_DIRECTORIES>)
target_compile_options (juce_shared PRIVATE -w)
if (PX_SANITIZE MATCHES undefined)
    # JUCE's reader of GIFs, which its mouse cursors are, looks two bytes before its buffer once and uses neither.
    get_target_property (juce_module_sources juce::juce_graphics INTERFACE_SOURCES)
    list (FILTER juce_module_sources INCLUDE REGEX "juce_graphics\\.cpp$")
    set_property (SOURCE ${juce_module_sources} APPEND PROPERTY COMPILE_OPTIONS -fno-sanitize=bounds)
endif ()
if (NOT PX_SANITIZE)
    # A debugging session doesn't step through JUCE's own code.
    target_compile_options (juce_shared PRIVATE -O2)
endif ()
