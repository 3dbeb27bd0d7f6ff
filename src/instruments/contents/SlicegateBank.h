#pragma once

#include "instruments/slicegate/SlicegatePreset.h"

#include <array>
#include <string>
#include <string_view>
#include <variant>

class SlicegateDeckState;

/** The eight pads of a deck. A value. Its file is XML: a root "slicegateBank" with "version" and "name", and in it eight
    elements of the pads' preset format, in their order. */
struct SlicegateBank
{
    std::string name; ///< UTF-8
    std::array<SlicegatePreset, padCount> pads;
};

/** Reads the file of a bank. Takes any bytes. @returns the bank, or a fault that says why it is none (see PresetXml) */
std::variant<SlicegateBank, std::string> readSlicegateBank (std::string_view bytes);

/** The file of a bank. */
std::string writeSlicegateBank (const SlicegateBank&);

/** A copy of a deck's pads. Any thread but the audio thread. */
SlicegateBank bankOf (const SlicegateDeckState&);

/** Fills all pads of a deck. The message thread. */
void loadBank (SlicegateDeckState&, const SlicegateBank&);

/** The same with a file. @returns a sentence for the user if nothing was loaded, else "" */
std::string loadBank (SlicegateDeckState&, const juce::File&);

/** Saves a deck's pads under the name of the file. @returns a sentence for the user if that failed, else "" */
std::string saveBank (const SlicegateDeckState&, const juce::File&);
