# The VST 2 headers: the free ones of the system, patched into the build folder where their records are shorter than
# what plug-ins and hosts of that format exchange. One set for both sides: the plug-in and the hosted slots.

find_path (PX_FST_DIR fst.h PATH_SUFFIXES pluginterfaces/fst REQUIRED)
set (px_vst2_root "${CMAKE_BINARY_DIR}/vst2")
set (px_vst2_dir "${px_vst2_root}/pluginterfaces/vst2.x")
file (READ "${PX_FST_DIR}/fst.h" px_fst)
set_property (DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PX_FST_DIR}/fst.h")

# px_patch_fst (OLD NEW): replaces the only place of OLD, or ends the configuration.
function (px_patch_fst old new)
    string (FIND "${px_fst}" "${old}" first)
    string (FIND "${px_fst}" "${old}" last REVERSE)
    if (first EQUAL -1 OR NOT first EQUAL last)
        message (FATAL_ERROR "${PX_FST_DIR}/fst.h does not have \"${old}\" exactly once: these patches are for fst 0.122.")
    endif ()
    string (REPLACE "${old}" "${new}" px_fst "${px_fst}")
    set (px_fst "${px_fst}" PARENT_SCOPE)
endfunction ()

# Eight speakers are the least that an arrangement has; hosting writes into them.
px_patch_fst ("t_fstSpeakerProperties speakers[]" "t_fstSpeakerProperties speakers[8]")
# The record of a pin is 128 bytes long, and a label's length does not count its terminator.
px_patch_fst ("char shortLabel[8];" "char shortLabel[8];\n  char _reserved[48];")
px_patch_fst ("(MaxLabelLen, 64)" "(MaxLabelLen, 63)")
px_patch_fst ("(MaxShortLabelLen, 8)" "(MaxShortLabelLen, 7)")
# Without their values a pin is neither active nor stereo, and a host's bypass button does nothing.
px_patch_fst ("FST_FLAG_UNKNOWN(PinIsActive)" "FST_FLAG(PinIsActive, 0)")
px_patch_fst ("FST_FLAG_UNKNOWN(PinIsStereo)" "FST_FLAG(PinIsStereo, 1)")
px_patch_fst ("FST_FLAG_UNKNOWN(PinUseSpeaker)" "FST_FLAG(PinUseSpeaker, 2)")
px_patch_fst ("FST_EFFECT_OPCODE_UNKNOWN(SetBypass)" "FST_EFFECT_OPCODE(SetBypass, 44)")

# Notes of the headers' authors to themselves, as warnings.
string (REGEX REPLACE "# *warning [^\n]*" "" px_fst "${px_fst}")

# Written only when they differ, so that a new configuration does not compile JUCE again.
file (CONFIGURE OUTPUT "${px_vst2_dir}/fst.h" CONTENT "${px_fst}" @ONLY)
foreach (header aeffect aeffectx)
    file (CONFIGURE OUTPUT "${px_vst2_dir}/${header}.h"
        CONTENT "#pragma once\n#define FST2VST 1\n#include \"fst.h\"\n" @ONLY)
endforeach ()

juce_set_vst2_sdk_path ("${px_vst2_root}")
target_include_directories (juce_shared BEFORE PRIVATE "${px_vst2_root}")
