#pragma once

#include "ui/global/CrossfaderPanel.h"
#include "ui/global/MixerChannel.h"

#include <memory>
#include <vector>

/** The page "MIXER": channels side by side over the crossfader. */
class MixerPage : public juce::Component
{
public:
    void resized() override;

protected:
    MixerPage (CPlatterdex&, MixerChannel::Shape, std::initializer_list<int> decks);

private:
    const MixerChannel::Shape shape;
    std::vector<std::unique_ptr<MixerChannel>> channels;
    CrossfaderPanel crossfader;
};

class Mixer2ChannelsComponent : public MixerPage
{
public:
    explicit Mixer2ChannelsComponent (CPlatterdex&);
};

/** In the order of the letters, or as the decks stand: C, A, B, D. */
class Mixer4ChannelsComponent : public MixerPage
{
public:
    Mixer4ChannelsComponent (CPlatterdex&, bool orderABCD);
};
