#include "ui/timecode/TimecodeDeckComponent.h"

#include "engine/CPlatterdex.h"
#include "support/language/Translate.h"
#include "timecode/deckmode/TimecodeBrand.h"
#include "ui/panel/PanelPaint.h"
#include "ui/timecode/TimecodeWords.h"

namespace
{
constexpr int margin = 8, column = 144, boxLeft = 192, boxWidth = 116, knobLeft = 324, knobStep = 42,
              knobSize = 40;
constexpr double rumbleRest = -32.0, leadInRest = 2.0, longestLeadIn = 120.0;
constexpr int letter = 20;

const juce::Rectangle<int> titleArea { margin, 4, letter, letter }, nameArea { margin + 26, 4, 100, letter },
    scopeArea { margin, 32, ScopeImage::side, ScopeImage::side },
    qualityArea { margin, 164, ScopeImage::side, 16 }, motionArea { knobLeft, 112, 124, 20 },
    wordsArea { column, 144, 300, 20 }, foundArea { column, 168, 300, 24 },
    latencyArea { knobLeft, 4, 124, 22 }, latencyTextArea { boxLeft - 40, 4, knobLeft - boxLeft + 32, 22 },
    learnArea { column, 116, 60, 24 }, invertArea { column + 64, 116, 100, 24 };

constexpr const char* learnTip = N_ (
    "Calibrate Platterdex to the nominal speed of a timecoded vinyl / cd (unpitched). To reset calibration "
    "value to factory default press the learn button with the turntable/cd off.");
constexpr const char* modeTip =
    N_ ("Absolute: the needle's place is the track's place. Relative: only its movement counts. Internal: "
        "In internal tracking mode the Vinyl/CDJ external timecode control is disabled.");
}

TimecodeDeckComponent::TimecodeDeckComponent (CPlatterdex& e, int d) : ControlPanel (e), deck (d)
{
    setComponentID (juce::String ("_deck") + PanelPaint::letterOf (deck) + "TimecodeGroup");
    addAndMakeVisible (scope);
    scope.setBounds (scopeArea);
    scope.setTooltip (tr ("The phase of the input: a good signal draws a closed ellipse."));

    addLabel (tr ("Input:"), { column, 32, 44, 24 }, juce::Justification::centredLeft);
    addLabel (tr ("Mode:"), { column, 60, 44, 24 }, juce::Justification::centredLeft);
    addBox (input, "_inputComboBox",
            tr ("Assign timecode control signal from the soundcard input stereo pair to this deck."),
            { boxLeft, 32, boxWidth, 24 });
    for (int pair = 0; pair < deckCount; ++pair)
        input.addItem (tr ("Input %1", PanelPaint::letterOf (pair)), pair + 1);
    input.onChange = [this] { setup().inputPair = static_cast<int8_t> (input.getSelectedId() - 1); };

    addBox (mode, "_dvsModeComboBox", tr (modeTip), { boxLeft, 60, boxWidth, 24 });
    for (const auto& [id, text] : { std::pair { 3, tr ("Absolute") }, std::pair { 2, tr ("Relative") },
                                    std::pair { 1, tr ("Internal") } })
        mode.addItem (text, id); // the mode's number is one less
    mode.onChange = [this]
    { timecode().setMode (static_cast<TimecodeDeck::Mode> (mode.getSelectedId() - 1)); };

    addBox (brand, "_dvsGeneration", tr ("Select timecode brand from the drop down menu."),
            { column, 88, boxLeft + boxWidth - column, 24 });
    auto id = 0;
    for (const auto& each : timecodeBrands())
        brand.addItem (each.name, ++id);
    brand.onChange = [this] { timecode().setBrand (brand.getSelectedId() - 1); };

    addKnob (
        "_gainSlider", tr ("Control input gain. Double click to reset gain to +0.0 dB."), 0, { -24.0, 48.0 },
        0.0, [this] { return static_cast<double> (setup().timecodeGain); },
        [this] (double db) { setup().timecodeGain = static_cast<float> (db); },
        [] (double db) { return juce::String::formatted ("%+.1f dB", db); });
    addKnob (
        "_rumbleSlider",
        tr ("Ignores input audio signals below the threshold level. Double click to reset to -32.0 dB."), 1,
        { -100.0, 0.0 }, rumbleRest,
        [this] { return -100.0 * static_cast<double> (setup().timecodeThreshold); },
        [this] (double db) { setup().timecodeThreshold = static_cast<float> (-0.01 * db); },
        [] (double db) { return juce::String::formatted ("%.1f dB", db); });
    addKnob (
        "_leadinSlider",
        tr ("Set a lead-in time for timecode records. Use double click to reset lead-in time to 2 seconds."),
        2, { 0.0, longestLeadIn }, leadInRest,
        [this] { return static_cast<double> (setup().timecodeLeadIn); },
        [this] (double seconds) { setup().timecodeLeadIn = static_cast<float> (seconds); },
        [] (double seconds) { return juce::String::formatted ("%.1f s", seconds); });
    for (const auto& [word, at] :
         { std::pair { tr ("GAIN"), 0 }, std::pair { tr ("RUMBLE"), 1 }, std::pair { tr ("LEAD IN"), 2 } })
        addLabel (word, { knobLeft - 4 + at * knobStep, 74, knobSize + 8, 14 });

    learn.setComponentID ("_learnButton");
    learn.setTooltip (tr (learnTip));
    learn.onClick = [this] { timecode().learn(); };
    learn.setBounds (learnArea);
    addAndMakeVisible (learn);
    invert.setComponentID ("_invertPhaseButton");
    invert.setTooltip (
        tr ("Inverts the phase of the input signal. Try this button if absolute mode does not work."));
    invert.setBounds (invertArea);
    invert.onClick = [this]
    {
        auto& flag = setup().timecodeInvert;
        flag = flag == 0 ? 1 : 0;
        refresh();
    };
    addAndMakeVisible (invert);
    found.setComponentID ("_foundButton");
    found.setTooltip (tr ("Follows the record that was recognised."));
    found.setBounds (foundArea);
    found.onClick = [this]
    {
        if (foundBrand >= 0)
            timecode().setBrand (foundBrand);
        refresh();
    };
    addChildComponent (found);
    latency.setComponentID ("_latencyButton");
    latency.setTooltip (
        tr ("Sends a click to the master output and waits for it at this deck's input: lay a cable from the "
            "one to the other, and turn the speakers down."));
    latency.setBounds (latencyArea);
    latency.onClick = [this] { engine.latencyProbe.start (setup().inputPair); };
    addAndMakeVisible (latency);
    setSize (width, height);
    timecode().addWatcher();
}

TimecodeDeckComponent::~TimecodeDeckComponent()
{
    timecode().removeWatcher();
}

TimecodeDeck& TimecodeDeckComponent::timecode() const
{
    return engine.timecodes[static_cast<size_t> (deck)];
}

DeckSetup& TimecodeDeckComponent::setup() const
{
    return engine.settings.deckSetup[static_cast<size_t> (deck)];
}

void TimecodeDeckComponent::addBox (juce::ComboBox& box, const char* name, const juce::String& tip,
                                    juce::Rectangle<int> area)
{
    box.setComponentID (name);
    box.setTooltip (tip);
    box.setTitle (tip);
    box.setBounds (area);
    addAndMakeVisible (box);
}

void TimecodeDeckComponent::addKnob (const char* name, const juce::String& tip, int at,
                                     juce::Range<double> range, double rest, std::function<double()> read,
                                     std::function<void (double)> write,
                                     std::function<juce::String (double)> text)
{
    auto& slider = own (std::make_unique<PXImageRotarySlider> (name));
    slider.setKnob (knobSize, range.getStart() < 0.0 && range.getEnd() > 0.0, -1);
    slider.setRange (range, 0.1);
    slider.setDefault (rest);
    slider.setTooltip (tip);
    slider.setTitle (tip);
    slider.setBounds (knobLeft + at * knobStep, 32, knobSize, knobSize);
    slider.setWords ({ text, [] (const juce::String& typed)
                       { return std::optional (typed.replaceCharacter (',', '.').getDoubleValue()); } });
    slider.setValue (read(), juce::dontSendNotification);
    slider.onValueChange = [&slider, write] { write (slider.getValue()); };
    knobs.push_back ({ &slider,
                       std::move (read),
                       std::move (text),
                       { knobLeft - 4 + at * knobStep, 90, knobSize + 8, 16 },
                       {} });
}

void TimecodeDeckComponent::restoreDefaults()
{
    const DeckSetup rest (deck);
    timecode().setMode (TimecodeDeck::Mode::internal);
    timecode().setBrand (rest.timecodeType);
    const CallbackLock lock (engine.getCallbackLock(), "timecode defaults");
    auto& now = setup();
    now.timecodeCalibration = rest.timecodeCalibration;
    now.timecodeThreshold = rest.timecodeThreshold;
    now.timecodeLeadIn = rest.timecodeLeadIn;
    now.timecodeAbsolute = rest.timecodeAbsolute;
    now.timecodeInvert = rest.timecodeInvert;
    now.timecodeGain = rest.timecodeGain;
    now.inputPair = rest.inputPair;
}

void TimecodeDeckComponent::pollMoving()
{
    engine.timecodeListener.listen (deck);
    const auto picture = engine.timecodeListener.picture (deck);
    const auto status = timecode().status();
    scope.show (picture.scope);
    learn.setToggleState (status.isLearning, juce::dontSendNotification);
    foundBrand = picture.foundBrand;
    found.setVisible (foundBrand >= 0);
    if (foundBrand >= 0)
        found.setButtonText (TimecodeWords::found (foundBrand));
    for (auto& knob : knobs)
    {
        const auto value = knob.read();
        if (!knob.slider->isBeingChanged())
            knob.slider->setValue (value, juce::dontSendNotification);
        if (auto text = knob.text (value); text != knob.shown)
        {
            knob.shown = std::move (text);
            repaint (knob.valueArea);
        }
    }
    const Shown next { TimecodeWords::diagnosis (status, picture.input),
                       TimecodeWords::quality (status, picture.input), TimecodeWords::motion (status),
                       TimecodeWords::latency (engine.latencyProbe.result(), setup().inputPair) };
    if (next == shown)
        return;
    shown = next;
    repaint();
}

void TimecodeDeckComponent::pollCalm()
{
    const auto& now = setup();
    input.setSelectedId (now.inputPair + 1, juce::dontSendNotification);
    mode.setSelectedId (static_cast<int> (timecode().mode()) + 1, juce::dontSendNotification);
    brand.setSelectedId (now.timecodeType + 1, juce::dontSendNotification);
    invert.setToggleState (now.timecodeInvert != 0, juce::dontSendNotification);
    learn.setEnabled (!timecodeBrand (now.timecodeType).isCoded());
}

void TimecodeDeckComponent::paint (juce::Graphics& g)
{
    ControlPanel::paint (g);
    PanelPaint::badge (g, titleArea, deck, true);
    PanelPaint::value (g, tr ("Deck %1", PanelPaint::letterOf (deck)), nameArea,
                       juce::Justification::centredLeft, SMLookAndFeel::titleSize);
    PanelPaint::label (g, tr ("QUALITY"), qualityArea, juce::Justification::centredLeft);
    PanelPaint::value (g, shown.quality, qualityArea, juce::Justification::centredRight);
    for (const auto& knob : knobs)
        PanelPaint::value (g, knob.shown, knob.valueArea, juce::Justification::centred,
                           SMLookAndFeel::labelSize);
    PanelPaint::value (g, shown.latency, latencyTextArea, juce::Justification::centredRight);
    PanelPaint::value (g, shown.motion, motionArea, juce::Justification::centredLeft);
    PanelPaint::value (g, shown.words, wordsArea, juce::Justification::centredLeft);
}
