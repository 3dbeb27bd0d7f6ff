#include "ui/global/MixerPages.h"

MixerPage::MixerPage (CPlatterdex& engine, MixerChannel::Shape s, std::initializer_list<int> decks)
    : shape (s),
      crossfader (engine)
{
    for (const auto deck : decks)
    {
        channels.push_back (std::make_unique<MixerChannel> (engine, deck, shape));
        addAndMakeVisible (*channels.back());
    }
    addAndMakeVisible (crossfader);
}

void MixerPage::resized()
{
    const auto isTall = shape == MixerChannel::Shape::tall;
    const auto width = isTall ? MixerChannel::tallWidth : MixerChannel::wideWidth;
    const auto height = isTall ? MixerChannel::tallHeight : MixerChannel::wideHeight;
    auto area = getLocalBounds();
    crossfader.setBounds (area.removeFromBottom (CrossfaderPanel::height));
    area = area.removeFromTop (height);
    for (auto& channel : channels)
        channel->setBounds (area.removeFromLeft (width));
}

Mixer2ChannelsComponent::Mixer2ChannelsComponent (CPlatterdex& engine)
    : MixerPage (engine, MixerChannel::Shape::wide, { 0, 1 })
{
}

Mixer4ChannelsComponent::Mixer4ChannelsComponent (CPlatterdex& engine, bool orderABCD)
    : MixerPage (engine, MixerChannel::Shape::tall,
                 orderABCD ? std::initializer_list<int> { 0, 1, 2, 3 }
                           : std::initializer_list<int> { 2, 0, 1, 3 })
{
}
