#include "WidgetSheet.h"

#include "skin/Palette.h"

namespace
{
constexpr int columns = 7; ///< off, over, down, the same lit, disabled

/** Brings a button into a state. */
void show (PXImageButton& button, int state)
{
    button.isOn = state >= 3 && state < 6;
    button.isOver = state % 3 == 1 && state < 6;
    button.setEnabled (state < 6);
    if (state % 3 == 2)
        button.mouseDown (mouse (button, { 1, 1 }, { 1, 1 }));
}

void show (juce::Button& button, int state)
{
    button.setToggleState (state >= 3 && state < 6, juce::dontSendNotification);
    button.setEnabled (state < 6);
    if (state < 6)
        button.setState (state % 3 == 2
                             ? juce::Button::buttonDown
                             : (state % 3 == 1 ? juce::Button::buttonOver : juce::Button::buttonNormal));
}
}

WidgetSheet::WidgetSheet()
{
    setSize (860, 800);
    addImageButtons (8);
    addTextButtons (8);
    addKnobs (256);
    addFaders (8, 348);
    addMeters (330, 348);
    addToolkit (440, 348);
}

void WidgetSheet::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
    paintMenu (g, { 440, 596, 190, 190 });

    const juce::String tip ("An independent monitor fader that blends between Main and PFL on the phones. "
                            "Double click to reset.");
    auto& look = getLookAndFeel();
    const auto place = look.getTooltipBounds (tip, { 8, 620 }, getLocalBounds());
    g.setOrigin (place.getPosition());
    look.drawTooltip (g, tip, place.getWidth(), place.getHeight());
}

void WidgetSheet::paintMenu (juce::Graphics& graphics, juce::Rectangle<int> area) const
{
    const juce::Graphics::ScopedSaveState saved (graphics);
    graphics.setOrigin (area.getPosition());
    auto& look = getLookAndFeel();
    look.drawPopupMenuBackground (graphics, area.getWidth(), area.getHeight());
    auto rest = area.withZeroOrigin().reduced (0, 4);
    look.drawPopupMenuSectionHeader (graphics, rest.removeFromTop (20), "Play mode");
    struct Item
    {
        const char* text;
        bool active, highlighted, ticked, hasSubMenu;
        const char* shortcut;
    };
    for (const auto& item :
         { Item { "One Shot", true, false, true, false, "" },
           Item { "Trigger", true, true, false, false, "T" },
           Item { "ReTrigger", false, false, false, false, "" }, Item { "", false, false, false, false, "" },
           Item { "User Banks", true, false, false, true, "" } })
    {
        const auto separator = *item.text == 0;
        look.drawPopupMenuItem (graphics, rest.removeFromTop (separator ? 9 : 24), separator, item.active,
                                item.highlighted, item.ticked, item.hasSubMenu, item.text, item.shortcut,
                                nullptr, nullptr);
    }
}

std::vector<juce::Component*> WidgetSheet::touched() const
{
    std::vector<juce::Component*> all;
    for (const auto& widget : widgets)
        if (dynamic_cast<CommandWidget*> (widget.get()) != nullptr)
            all.push_back (widget.get());
    return all;
}

void WidgetSheet::addImageButtons (int y)
{
    for (const auto* strip :
         { "play_40_a", "cue_40_b", "sync_40", "pfl_24", "rec_24", "lock_20", "power_24" })
    {
        const SkinPicture picture (strip);
        for (int state = 0; state < columns; ++state)
        {
            const juce::Rectangle<int> place (8 + 44 * state, y, picture.width(), picture.height());
            auto& button = add<PXImageButton> (CommandWidget::hitArea (place));
            button.setStrip (picture);
            show (button, state);
        }
        y += picture.height() + 6;
    }
}

void WidgetSheet::addTextButtons (int y)
{
    struct Row
    {
        const char* text;
        int width, height, deck;
    };
    for (const auto& row :
         { Row { "KILL", 60, 22, -1 }, Row { "Loop", 66, 24, 0 }, Row { "HOT CUE 1", 70, 32, 1 },
           Row { "Editor...", 70, 24, 2 }, Row { "7", 26, 24, 3 } })
    {
        for (int state = 0; state < columns; ++state)
        {
            auto& button =
                add<PXTextButton> ({ 330 + 74 * state, y, row.width, row.height }, juce::String (row.text));
            if (row.deck >= 0)
                button.setDeckHue (row.deck);
            show (button, state);
        }
        y += row.height + 8;
    }
    for (int state = 0; state < columns; ++state)
    {
        auto& menu = add<MenuButton> ({ 330 + 74 * state, y, 70, 24 }, juce::String ("Curve"));
        show (menu, state);
    }
}

void WidgetSheet::addKnobs (int y)
{
    for (int i = 0; i < 8; ++i)
    {
        const auto value = std::min (1.0, i / 6.0);
        auto& small = add<PXImageRotarySlider> ({ 8 + 44 * i, y, 28, 28 });
        small.setKnob (28, true);
        auto& large = add<PXImageRotarySlider> ({ 8 + 44 * i, y + 36, 40, 40 });
        large.setKnob (40, false, i % 4);
        auto& fx = add<PXImageRotarySlider> ({ 370 + 44 * i, y, 40, 40 });
        fx.setKnob (40, true);
        for (auto* knob : { &small, &large, &fx })
        {
            knob->setValue (value, juce::dontSendNotification);
            knob->setEnabled (i != 7);
            if (i == 5)
                knob->mouseDown (mouse (*knob, { 1, 1 }, { 1, 1 }));
        }
    }
}

void WidgetSheet::addFaders (int x, int y)
{
    for (int i = 0; i < 4; ++i)
    {
        auto& fader = add<PXImageLinearSlider> ({ x + 30 * i, y, 22, 132 });
        if (i < 2)
            fader.setImages ("fader_128", "fader_cap");
        else
            fader.setImages ("fader_track", "fader_cap", PXImageLinearSlider::Track::stretched);
        fader.setValue (i / 3.0, juce::dontSendNotification);
        fader.setEnabled (i != 3);
        if (i == 1)
            fader.mouseDown (mouse (fader, { 1, 1 }, { 1, 1 }));
    }
    auto& pitch = add<PXImageLinearSlider> ({ x + 128, y, 28, 164 });
    pitch.setImages ("pitch_164", "fader_cap");
    pitch.setValue (0.5, juce::dontSendNotification);
    for (int i = 0; i < 2; ++i)
    {
        auto& cross = add<PXImageLinearSlider> ({ x, y + 180 + 28 * i, 200, 22 },
                                                juce::String ("_crossfader"), juce::Slider::LinearHorizontal);
        if (i == 0)
            cross.setImages ("crossfader_200", "crossfader_cap");
        else
            cross.setImages ("crossfader_track", "crossfader_cap", PXImageLinearSlider::Track::stretched);
        cross.setValue (0.5 + 0.5 * i, juce::dontSendNotification);
    }
    for (int i = 0; i < 2; ++i)
    {
        auto& bar = add<ResizableScrollBar> (i == 0 ? juce::Rectangle<int> (x, y + 244, 300, 12)
                                                    : juce::Rectangle<int> (x + 260, y, 12, 160),
                                             i == 1);
        bar.setRangeLimits (0.0, 1.0);
        bar.setCurrentRange (0.2, 0.4);
    }
}

void WidgetSheet::addMeters (int x, int y)
{
    for (int i = 0; i < 4; ++i)
    {
        auto& flat = add<PXImageHorizontalLevelMeter> ({ x, y + 20 * i, 86, 16 });
        flat.setLevels (std::array { 0.0f, 0.1f, 0.5f, 1.0f }[static_cast<size_t> (i)], 0.3f);
        auto& upright = add<PXImageVerticalLevelMeter> ({ x + 22 * i, y + 90, 16, 86 });
        if (i > 0)
            upright.setImages (skin::deckName ("meter_upright", i));
        upright.setLevels (0.2f * static_cast<float> (i), 1.0f);
    }
}

void WidgetSheet::addToolkit (int x, int y)
{
    for (int i = 0; i < 2; ++i)
    {
        auto& box =
            add<juce::ComboBox> ({ x + 140 * i, y, 130, 24 }, i == 0 ? "_box" : SMLookAndFeel::ghostName);
        box.addItem ("Smooth", 1);
        box.setSelectedId (1, juce::dontSendNotification);
        auto& toggle = add<juce::ToggleButton> ({ x + 140 * i, y + 32, 130, 22 }, "Show tooltips");
        toggle.setToggleState (i == 1, juce::dontSendNotification);
        auto& field = add<juce::TextEditor> ({ x + 140 * i, y + 62, 130, 24 });
        field.setText ("Search");
        auto& slider = add<juce::Slider> ({ x + 140 * i, y + 94, 130, 24 }, juce::Slider::LinearHorizontal,
                                          juce::Slider::NoTextBox);
        slider.setRange (0.0, 1.0);
        slider.setValue (0.6 * i, juce::dontSendNotification);
        add<juce::TextButton> ({ x + 140 * i, y + 126, 130, 24 }, juce::String ("Toolkit's own"))
            .setToggleState (i == 1, juce::dontSendNotification);
    }
    auto& bar = add<juce::TabbedButtonBar> ({ x, y + 158, 270, 24 }, juce::TabbedButtonBar::TabsAtTop);
    for (const auto* tab : { "MIXER", "FX", "SAMPLER", "WAV" })
        bar.addTab (tab, palette::ground, -1);
    auto& group =
        add<juce::GroupComponent> ({ x, y + 190, 130, 40 }, juce::String(), juce::String ("Layout"));
    group.setEnabled (true);
    auto& header = add<juce::TableHeaderComponent> ({ x + 140, y + 190, 260, 22 });
    for (int i = 1; i < 4; ++i)
        header.addColumn (juce::StringArray { "Title", "Artist", "BPM" }[i - 1], i, 80);
    header.setSortColumnId (2, true);

    auto& window = add<juce::DocumentWindow> ({ x + 290, y, 120, 60 }, juce::String ("Editor"),
                                              juce::Colours::black, juce::DocumentWindow::allButtons, false);
    window.setTitleBarHeight (24);
    if (juce::Desktop::getInstance().getDisplays().displays.isEmpty())
        return; // a dialog measures the screen
    auto& alert =
        add<juce::AlertWindow> ({ 0, 0, 1, 1 }, juce::String ("Title"), juce::String ("What it says."),
                                juce::MessageBoxIconType::WarningIcon);
    alert.setTopLeftPosition (330, 240);
}
