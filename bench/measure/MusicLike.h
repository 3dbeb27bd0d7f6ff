#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_core/juce_core.h>

/** Audio that costs a codec and the reader what music does: drums, a bass line and chords over a floor of noise, other
    on the two sides. The same for the same arguments. */
namespace MusicLike
{
/** @param rate   in Hz
    @returns two channels, peaks within +-1 */
juce::AudioBuffer<float> make (double seconds, double rate, int seed = 1);

/** A 5-minute file of it at 44.1 kHz, made by the ffmpeg command line unless it is there already.
    @param extension   "mp3", "flac", "ogg" or "m4a"; picks codec and bit rate
    @param folder      keeps the files from run to run
    @returns the file; one that does not exist where it can't be made, the reason printed */
juce::File encoded (const juce::String& extension, const juce::File& folder);
}
