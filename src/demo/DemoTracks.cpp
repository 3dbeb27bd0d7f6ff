#include "demo/DemoTracks.h"

#include "demo/MixDown.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace
{
const Song* songOf (const DemoTrack& track) noexcept
{
    const auto found = std::ranges::find_if (songs(), [&] (const Song& song)
                                             { return std::string_view (song.track.title) == track.title; });
    return found != songs().end() ? &*found : nullptr;
}

/** The public columns of the table of songs. */
struct PublicTable
{
    PublicTable()
    {
        for (const auto& song : songs())
        {
            tracks.push_back (song.track);
            auto& form = forms.emplace_back();
            for (const auto& section : song.sections)
                form.push_back ({ section.kind, section.bars });
        }
    }

    std::vector<DemoTrack> tracks;
    std::vector<std::vector<DemoSection>> forms;
};

const PublicTable& publicTable()
{
    static const PublicTable table;
    return table;
}
}

std::span<const DemoTrack> demoTracks()
{
    return publicTable().tracks;
}

std::span<const DemoSection> demoSections (const DemoTrack& track)
{
    const auto* song = songOf (track);
    if (song == nullptr)
        return {};
    return publicTable().forms[static_cast<size_t> (song - songs().data())];
}

juce::AudioBuffer<float> renderDemoTrack (const DemoTrack& track)
{
    const auto* song = songOf (track);
    if (song == nullptr)
        return {};
    const Score score (*song);
    auto mix = mixDown (*song, score);
    master (mix, song->track.firstBeatFrames);
    return mix;
}
