#include "ui/DeckRow.h"

#include "deck/FileImportThread.h"
#include "engine/CPlatterdex.h"
#include "support/AudioFileTypes.h"
#include "ui/Look.h"
#include "ui/TimeText.h"

#include <cmath>
#include <limits>

namespace
{
constexpr int margin = 8, gap = 4, group = 12, lineGap = 6;
constexpr int buttonHeight = 28, headHeight = 28;
constexpr int messageSeconds = 5;
constexpr const char* dash = "-";

juce::String letterOf (int deck)
{
    return juce::String::charToString (static_cast<juce::juce_wchar> ('A' + deck));
}
}

DeckRowLayout::DeckRowLayout (juce::Rectangle<int> row)
{
    stripe = row.removeFromLeft (4);
    row.reduce (margin, margin);

    auto right = row.removeFromRight (72);
    row.removeFromRight (group);
    pitchText = right.removeFromBottom (16);
    right.removeFromBottom (gap);
    pitch = right.withSizeKeepingCentre (28, right.getHeight());
    channel = row.removeFromRight (ChannelView::width);
    row.removeFromRight (group);

    effects = row.removeFromBottom (EffectRow::height);
    row.removeFromBottom (lineGap);

    auto left = row.removeFromLeft (64);
    row.removeFromLeft (group);
    load = left.removeFromBottom (buttonHeight);
    left.removeFromBottom (lineGap);
    letter = left;

    auto head = row.removeFromTop (headHeight);
    length = head.removeFromRight (64);
    position = head.removeFromRight (96);
    head.removeFromRight (gap);
    tempo = head.removeFromRight (100);
    head.removeFromRight (gap);
    state = head.removeFromRight (76);
    head.removeFromRight (group);
    title = head;

    auto buttons = row.removeFromBottom (buttonHeight);
    row.removeFromBottom (lineGap);
    row.removeFromTop (gap);
    waveform = row;

    const auto place = [&buttons] (int width, int space)
    {
        const auto area = buttons.removeFromLeft (width);
        buttons.removeFromLeft (space);
        return area;
    };
    cue = place (60, gap);
    play = place (60, group);
    for (auto& slot : hotCues)
        slot = place (36, &slot == &hotCues.back() ? group : gap);
    nudgeMinus = place (32, gap);
    nudgePlus = place (32, group);
    sync = place (56, gap);
    keyLock = place (76, group);
    keyLabel = place (26, 0);
    keyTuning = place (buttonHeight, 0);
}

DeckRow::DeckRow (CPlatterdex& e, int deck)
    : PollingView (Pace::moving),
      engine (e),
      deckIndex (deck),
      commands (deck),
      overview (e, deck),
      play (e, commands.play, "Play"),
      cue (e, commands.cue, "Cue"),
      sync (e, commands.sync, "Sync"),
      keyLock (e, commands.keyLock, "Key lock"),
      nudgeMinus (e, commands.nudgeMinus, "-"),
      nudgePlus (e, commands.nudgePlus, "+"),
      keyTuning (e, commands.keyTuning, CommandSlider::Shape::knob, 0.5),
      pitch (e, deck),
      channel (e, deck),
      effects (e, deck)
{
    setOpaque (true);
    setTitle ("Deck " + letterOf (deck));
    load.setTooltip ("Load a track into deck " + letterOf (deck));
    load.setWantsKeyboardFocus (false);
    load.setMouseClickGrabsKeyboardFocus (false);
    load.onClick = [this] { chooseFile(); };

    for (size_t slot = 0; slot < hotCues.size(); ++slot)
    {
        hotCues[slot] = std::make_unique<CommandButton> (e, commands.hotCues[slot],
                                                         juce::String (static_cast<int> (slot) + 1));
        hotCues[slot]->setAlternative (commands.deleteHotCues[slot]);
        hotCues[slot]->setTooltip (hotCues[slot]->getTooltip() + ". Right click to delete.");
    }

    for (auto* button :
         { &play, &cue, hotCues[0].get(), hotCues[1].get(), hotCues[2].get(), hotCues[3].get() })
        button->setLitColour (Look::deckHue (deck));
    for (auto* child :
         std::initializer_list<juce::Component*> { &overview, &load, &cue, &play, &nudgeMinus, &nudgePlus,
                                                   &sync, &keyLock, &keyTuning, &pitch, &channel, &effects })
        addAndMakeVisible (child);
    for (auto& hotCue : hotCues)
        addAndMakeVisible (*hotCue);
}

DeckRow::~DeckRow() = default;

void DeckRow::resized()
{
    const DeckRowLayout layout (getLocalBounds());
    load.setBounds (layout.load);
    overview.setBounds (layout.waveform);
    play.setBounds (layout.play);
    cue.setBounds (layout.cue);
    sync.setBounds (layout.sync);
    keyLock.setBounds (layout.keyLock);
    keyTuning.setBounds (layout.keyTuning);
    effects.setBounds (layout.effects);
    nudgeMinus.setBounds (layout.nudgeMinus);
    nudgePlus.setBounds (layout.nudgePlus);
    pitch.setBounds (layout.pitch);
    channel.setBounds (layout.channel);
    for (size_t slot = 0; slot < hotCues.size(); ++slot)
        hotCues[slot]->setBounds (layout.hotCues[slot]);
}

void DeckRow::pollMoving()
{
    for (auto* button : { &play, &cue, &sync, &keyLock, &nudgeMinus, &nudgePlus })
        button->poll();
    for (auto& hotCue : hotCues)
        hotCue->poll();
    keyTuning.poll();
    pitch.poll();

    const auto& deck = *engine.decks.deck (deckIndex);
    const auto rate = deck.sampleRate.get();
    const auto unknown = std::numeric_limits<double>::quiet_NaN();
    const auto loaded = deck.loadedFrames > 0 && rate > 0.0;

    auto next = shown;
    next.playing = deck.playState != 0;
    next.position = timeText (loaded ? deck.heardPosition() / rate : unknown);
    next.length = timeText (loaded ? deck.loadedFrames / rate : unknown);
    next.pitch = percentText (1.0 + (deck.pitch - 0.5) * engine.decks.pitchRange);
    // Without a grid nobody knows how fast the music is.
    next.tempo = deck.numBeats > 0 ? juce::String (deck.bpm * deck.tempo, 2) : juce::String (dash);
    next.state = deck.importThread->isBusy() ? "LOADING..."
                                             : (!loaded ? "EMPTY" : (next.playing ? "PLAYING" : "STOPPED"));
    take (next);
    updateNotice();
}

void DeckRow::pollCalm()
{
    auto next = shown;
    const auto texts = engine.decks.deck (deckIndex)->texts();
    next.title = texts.artist.isEmpty() ? texts.title : texts.artist + " - " + texts.title;
    if (next.title.isEmpty())
        next.title = dash;
    take (next);

    if (messageTurns > 0 && --messageTurns == 0 && engine.decks.deck (deckIndex)->loadedFrames > 0)
        clearMessage();
}

void DeckRow::take (const Texts& next)
{
    if (next == shown)
        return;
    const DeckRowLayout layout (getLocalBounds());
    const auto update = [this] (bool changed, juce::Rectangle<int> area)
    {
        if (changed)
            repaint (area);
    };
    update (next.title != shown.title, layout.title);
    update (next.state != shown.state, layout.state);
    update (next.tempo != shown.tempo, layout.tempo);
    update (next.position != shown.position, layout.position);
    update (next.length != shown.length, layout.length);
    update (next.pitch != shown.pitch, layout.pitchText);
    update (next.playing != shown.playing, layout.letter);
    update (next.playing != shown.playing, layout.stripe);
    update (next.playing != shown.playing, layout.state);
    shown = next;
}

void DeckRow::showMessage (const juce::String& text)
{
    message = juce::StringArray::fromTokens (text, "|", {});
    messageTurns = messageSeconds * 1000 / calmMs;
    updateNotice();
}

void DeckRow::clearMessage()
{
    message.clear();
    messageTurns = 0;
    updateNotice();
}

void DeckRow::updateNotice()
{
    if (!message.isEmpty())
        overview.setNotice (message);
    else if (engine.decks.deck (deckIndex)->importThread->isBusy())
        overview.setNotice ({ "LOADING..." });
    else if (engine.decks.deck (deckIndex)->loadedFrames == 0)
        overview.setNotice ({ "Drop a track here, or press Load." }, true);
    else
        overview.setNotice ({});
}

void DeckRow::paint (juce::Graphics& g)
{
    const DeckRowLayout layout (getLocalBounds());
    const auto hue = Look::deckHue (deckIndex);
    Look::fillRaised (g, getLocalBounds(), Look::row);

    g.setColour (shown.playing ? hue : Look::line);
    g.fillRect (layout.stripe);
    g.setColour (shown.playing ? hue : Look::well);
    g.fillRect (layout.letter);
    g.setColour (shown.playing ? Look::dark : hue);
    g.setFont (Look::font (2.0f * Look::figureSize));
    g.drawText (letterOf (deckIndex), layout.letter, juce::Justification::centred, false);

    g.setColour (Look::value);
    g.setFont (Look::font (Look::titleSize));
    g.drawText (shown.title, layout.title, juce::Justification::centredLeft, true);

    g.setColour (shown.playing ? hue : Look::label);
    g.setFont (Look::labelFont());
    g.drawText (shown.state, layout.state, juce::Justification::centredRight, false);

    g.setColour (Look::value);
    g.setFont (Look::font (Look::figureSize));
    g.drawText (shown.position, layout.position, juce::Justification::centredRight, false);
    auto tempo = layout.tempo;
    const auto unit = tempo.removeFromRight (32);
    g.drawText (shown.tempo, tempo, juce::Justification::centredRight, false);
    g.setColour (Look::label);
    g.setFont (Look::labelFont());
    g.drawText ("KEY", layout.keyLabel, juce::Justification::centredLeft, false);
    g.drawText ("BPM", unit.translated (0, 3), juce::Justification::centredRight, false);
    g.setFont (Look::font (Look::valueSize));
    g.drawText (shown.length, layout.length.translated (0, 3), juce::Justification::centredRight, false);
    g.drawText (shown.pitch, layout.pitchText, juce::Justification::centred, false);
}

void DeckRow::paintOverChildren (juce::Graphics& g)
{
    if (!dropTarget)
        return;
    g.setColour (Look::focus);
    g.drawRect (getLocalBounds(), 2);
}

bool DeckRow::isInterestedInFileDrag (const juce::StringArray& files)
{
    return std::any_of (files.begin(), files.end(),
                        [] (const auto& path) { return AudioFileTypes::matches (juce::File (path)); });
}

void DeckRow::filesDropped (const juce::StringArray& files, int, int)
{
    setDropTarget (false);
    for (const auto& path : files)
        if (const juce::File file (path); AudioFileTypes::matches (file))
            return engine.loadTrack (file, deckIndex);
}

void DeckRow::setDropTarget (bool target)
{
    dropTarget = target;
    repaint();
}

void DeckRow::chooseFile()
{
    const juce::File current (engine.decks.deck (deckIndex)->texts().filePath);
    const auto folder = current.existsAsFile() ? current.getParentDirectory()
                                               : juce::File (engine.settings.audioFolder.get());
    chooser = std::make_unique<juce::FileChooser> ("Load a track into deck " + letterOf (deckIndex), folder,
                                                   AudioFileTypes::wildcard);
    chooser->launchAsync (juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectFiles,
                          [this] (const juce::FileChooser& chosen)
                          {
                              if (const auto file = chosen.getResult(); file != juce::File())
                                  engine.loadTrack (file, deckIndex);
                          });
}
