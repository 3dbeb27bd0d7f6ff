#pragma once

#include "plugins/catalogue/KnownPluginEntry.h"

#include <memory>
#include <set>
#include <vector>

/** Loads plug-ins of the three formats through JUCE. It runs their code, which may do anything: hang, open windows, end the
    process. Unknown plug-ins are loaded in the scanner process. Message thread, or the one thread of a program without
    a message loop. */
class PluginFormats
{
public:
    PluginFormats();
    ~PluginFormats();

    /** All plug-ins of a file or bundle, without having played any.
        @param format   of PluginFileFilter
        @returns none if there is none that could be loaded */
    std::vector<juce::PluginDescription> describe (const juce::File&, const juce::String& format);

    struct Made
    {
        std::unique_ptr<juce::AudioPluginInstance> instance;
        juce::String fault; ///< without an instance: one sentence
    };

    /** Makes an instance. @param rate, block   that it will be prepared with, in Hz and frames */
    Made create (const KnownPluginEntry&, double rate, int block);

private:
    juce::AudioPluginFormat* find (const juce::String& format);
    void showFolderOf (const juce::File& bundle, juce::AudioPluginFormat&);

    std::vector<std::unique_ptr<juce::AudioPluginFormat>> formats; ///< those that were needed so far
    std::set<juce::String> shownFolders;                           ///< that LV2's world has loaded
};
