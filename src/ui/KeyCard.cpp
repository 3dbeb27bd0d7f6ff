#include "ui/KeyCard.h"

#include "skin/Palette.h"
#include "support/language/Translate.h"
#include "ui/command/KeyboardCommands.h"
#include "ui/panel/PanelPaint.h"

#include <algorithm>

namespace
{
constexpr int margin = 16, edge = 4, gap = 24, cardMargin = 16;
constexpr int lineHeight = 20, keyHeight = 16, keyGap = 4, textGap = 8;
constexpr int actionWidth = 124, deckKeyWidth = 52, blockWidth = actionWidth + 4 * (deckKeyWidth + keyGap);
constexpr int deskKeyWidth = 84, deskWidth = 242, beginningWidth = 344;

constexpr const char* beginning[] {
    N_ ("Drop a track on a deck, or click the deck's letter."),
    N_ ("Play starts it; Cue sets the point to come back to."),
    N_ ("Drag the waveform to scratch it like a record."),
    N_ ("Click the overview below it to jump through the track."),
    N_ ("Double click a knob or a fader to reset it."),
    N_ ("Right click a control for more."),
};

void paintKey (juce::Graphics& g, const juce::String& key, juce::Rectangle<int> area)
{
    const auto cap = area.withSizeKeepingCentre (area.getWidth(), keyHeight);
    g.setColour (palette::well);
    g.fillRoundedRectangle (cap.toFloat(), 2.0f);
    PanelPaint::label (g, key, cap);
}

void paintText (juce::Graphics& g, const juce::String& text, juce::Rectangle<int> area)
{
    g.setFont (SMLookAndFeel::font (SMLookAndFeel::valueSize));
    g.setColour (palette::label);
    g.drawText (text, area, juce::Justification::centredLeft, false);
}
}

KeyCard::KeyCard()
{
    setSize (1120, 400);
    setOpaque (true);
    for (const auto& binding : keyBindings())
    {
        if (binding.deck() < 0)
        {
            desk.push_back ({ tr (binding.keyName), tr (binding.text) });
            continue;
        }
        // A deck's hot cues lie side by side on the keyboard; one row says so.
        const auto isCue = std::string_view (binding.text).starts_with ("hot cue");
        const auto text = isCue ? tr ("hot cues 1 to 4") : tr (binding.text);
        auto found = std::find_if (actions.begin(), actions.end(),
                                   [&] (const auto& action) { return action.text == text; });
        if (found == actions.end())
            found = actions.insert (actions.end(), { text, {} });
        auto& key = found->keys[static_cast<size_t> (binding.deck())];
        key = key.isEmpty() ? tr (binding.keyName)
                            : key.upToFirstOccurrenceOf (" ", false, false) + " - " + binding.keyName;
    }
}

/** As few blocks side by side as the height allows; then what there is width for. */
KeyCard::Plan KeyCard::plan() const
{
    Plan made;
    const auto room = getLocalBounds().reduced (margin, edge);
    const auto count = static_cast<int> (actions.size());
    const auto lines = std::min (room.getHeight() / lineHeight, count + 1);
    if (lines < 2)
        return made;
    made.blocks = (count + lines - 2) / (lines - 1);
    made.rows = (count + made.blocks - 1) / made.blocks;

    auto width = made.blocks * blockWidth + (made.blocks - 1) * gap;
    auto needed = made.rows + 1;
    if (width > room.getWidth())
        return {};
    const auto take = [&] (int extra, int height)
    {
        const auto fits = width + gap + extra <= room.getWidth() && height * lineHeight <= room.getHeight();
        if (fits)
        {
            width += gap + extra;
            needed = std::max (needed, height);
        }
        return fits;
    };
    made.desk = take (deskWidth, static_cast<int> (desk.size()));
    made.beginning = take (beginningWidth, static_cast<int> (std::size (beginning)) + 1);
    // In the middle, and above it as much as the eye wants to see a thing in the middle.
    const auto height = needed * lineHeight;
    made.area = { room.getCentreX() - width / 2, room.getY() + (room.getHeight() - height) * 2 / 5, width,
                  height };
    return made;
}

void KeyCard::paint (juce::Graphics& g)
{
    g.fillAll (palette::ground);
    const auto parts = plan();
    if (parts.blocks == 0)
        return;
    if (const auto card = parts.area.expanded (cardMargin + textGap, cardMargin);
        getLocalBounds().reduced (keyGap).contains (card))
        SMLookAndFeel::fillRaised (g, card, palette::panel);

    auto area = parts.area;
    const auto next = [&area] (int width)
    {
        const auto part = area.removeFromLeft (width);
        area.removeFromLeft (gap);
        return part;
    };
    if (parts.beginning)
    {
        auto column = next (beginningWidth);
        PanelPaint::value (g, tr ("Ready to play"), column.removeFromTop (lineHeight),
                           juce::Justification::centredLeft, SMLookAndFeel::titleSize);
        for (const auto* sentence : beginning)
            paintText (g, tr (sentence), column.removeFromTop (lineHeight));
    }
    for (int block = 0; block < parts.blocks; ++block)
        paintActions (g, next (blockWidth), static_cast<size_t> (block * parts.rows),
                      std::min (actions.size(), static_cast<size_t> ((block + 1) * parts.rows)));
    if (parts.desk)
        paintDesk (g, next (deskWidth));
}

void KeyCard::paintActions (juce::Graphics& g, juce::Rectangle<int> block, size_t from, size_t to) const
{
    const auto keysOf = [] (juce::Rectangle<int> row, size_t deck)
    {
        return row.withTrimmedLeft (actionWidth + keyGap)
            .translated (static_cast<int> (deck) * (deckKeyWidth + keyGap), 0)
            .withWidth (deckKeyWidth);
    };
    auto row = block.removeFromTop (lineHeight);
    PanelPaint::label (g, tr ("KEYS"), row, juce::Justification::centredLeft);
    for (size_t deck = 0; deck < 4; ++deck)
        PanelPaint::badge (g, keysOf (row, deck).withSizeKeepingCentre (keyHeight, keyHeight),
                           static_cast<int> (deck), false);
    for (auto at = from; at < to; ++at)
    {
        row = block.removeFromTop (lineHeight);
        paintText (g, actions[at].text, row.withWidth (actionWidth));
        for (size_t deck = 0; deck < 4; ++deck)
            if (const auto& key = actions[at].keys[deck]; key.isNotEmpty())
                paintKey (g, key, keysOf (row, deck));
    }
}

void KeyCard::paintDesk (juce::Graphics& g, juce::Rectangle<int> area) const
{
    if (area.getHeight() > static_cast<int> (desk.size()) * lineHeight)
        PanelPaint::label (g, tr ("DESK"), area.removeFromTop (lineHeight), juce::Justification::centredLeft);
    for (const auto& key : desk)
    {
        auto row = area.removeFromTop (lineHeight);
        paintKey (g, key.key, row.removeFromLeft (deskKeyWidth));
        paintText (g, key.text, row.withTrimmedLeft (textGap));
    }
}
