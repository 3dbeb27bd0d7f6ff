#pragma once

#include "demo/DemoTrack.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <span>

/** All demo tracks. The table is constant; any thread. */
std::span<const DemoTrack> demoTracks();

/** The form of one of demoTracks(), by its title; empty for any other. Any thread. */
std::span<const DemoSection> demoSections (const DemoTrack&);

/** Renders one of demoTracks() as stereo at 44.1 kHz: peak -0.5 dBFS, bass mono below 120 Hz, faded to silence at
    the end. The same samples each time, on every machine. Takes a few tenths of a second; any thread but the audio
    thread.
    @returns an empty buffer for a track that is not of the table */
juce::AudioBuffer<float> renderDemoTrack (const DemoTrack&);
