#include "UiBench.h"

#include "skin/Palette.h"
#include "text/ZRRenderer.h"
#include "ui/preferences/Preferences.h"
#include "ui/widgets/PXImageButton.h"
#include "ui/widgets/PXImageRotarySlider.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
constexpr float scale = 3.0f; ///< at which the strokes of a letter are wider than a pixel
constexpr double leastOfText = 4.5, leastOfSign = 3.0;

/** A renderer that measures each letter as it is laid down: the pixel that it changes most, against what was there. */
class MeasuringRenderer : public ZRRenderer
{
public:
    struct Letter
    {
        juce::juce_wchar character;
        juce::Point<int> place;
        double contrast;
        juce::Colour ink, ground;
    };

    explicit MeasuringRenderer (const juce::Image& i)
        : ZRRenderer (i, {}, i.getBounds(), GlyphBlend::Pixels::grey),
          image (i)
    {
    }

    void drawGlyph (int glyphNumber, const juce::AffineTransform& transform) override
    {
        const auto place = juce::Point<float>().transformedBy (stack->transform.getTransformWith (transform));
        const auto height = stack->font.getHeight() * scale;
        const auto box = juce::Rectangle<float> (place.x - height / 2, place.y - height * 1.2f, height * 2.0f,
                                                 height * 1.7f)
                             .getSmallestIntegerContainer()
                             .getIntersection (image.getBounds());
        const auto before = image.getClippedImage (box).createCopy();
        ZRRenderer::drawGlyph (glyphNumber, transform);
        Letter letter { static_cast<juce::juce_wchar> (glyphNumber), box.getCentre(), 0.0, {}, {} };
        for (int y = 0; y < box.getHeight(); ++y)
            for (int x = 0; x < box.getWidth(); ++x)
            {
                const auto ground = before.getPixelAt (x, y),
                           ink = image.getPixelAt (box.getX() + x, box.getY() + y);
                if (ink == ground)
                    continue;
                if (const auto contrast = palette::contrast (ink, ground); contrast > letter.contrast)
                    letter = { letter.character, letter.place, contrast, ink, ground };
            }
        if (letter.contrast > 0.0)
            letters.push_back (letter);
    }

    std::vector<Letter> letters;

private:
    juce::Image image;
};

/** Paints a component and expects that each word stands out. @returns the picture */
juce::Image expectReadable (juce::Component& view, int& letterCount)
{
    juce::Image image (juce::Image::RGB, juce::roundToInt (scale * static_cast<float> (view.getWidth())),
                       juce::roundToInt (scale * static_cast<float> (view.getHeight())), true,
                       juce::SoftwareImageType());
    MeasuringRenderer context (image);
    juce::Graphics g (context);
    g.addTransform (juce::AffineTransform::scale (scale));
    view.paintEntireComponent (g, true);
    letterCount += static_cast<int> (context.letters.size());

    // A word is as readable as its best letter: a dot or a dash is thinner than a stroke.
    struct Word
    {
        juce::String text;
        MeasuringRenderer::Letter best;
    };
    std::vector<Word> words;
    for (const auto& letter : context.letters)
    {
        const auto isNext = !words.empty() && words.back().best.place.y == letter.place.y
                            && std::abs (words.back().best.place.x - letter.place.x) < 400;
        if (!isNext)
            words.push_back ({ {}, letter });
        words.back().text << juce::String::charToString (letter.character);
        if (letter.contrast > words.back().best.contrast)
            words.back().best = letter;
    }
    for (const auto& [text, best] : words)
        EXPECT_GE (best.contrast, leastOfText)
            << text << " at " << (best.place.toFloat() / scale).toString() << ": " << best.ink.toString()
            << " on " << best.ground.toString();
    return image;
}

/** The contrast of what is drawn in an area to the colour that covers most of it. */
double signContrast (const juce::Image& picture, juce::Rectangle<int> area)
{
    std::map<juce::uint32, int> counts;
    for (int y = area.getY(); y < area.getBottom(); ++y)
        for (int x = area.getX(); x < area.getRight(); ++x)
            ++counts[picture.getPixelAt (x, y).getARGB()];
    const auto most =
        std::max_element (counts.begin(), counts.end(),
                          [] (const auto& one, const auto& other) { return one.second < other.second; });
    auto best = 1.0;
    for (const auto& [colour, count] : counts)
        if (count * 400 >= area.getWidth() * area.getHeight())
            best = std::max (best, palette::contrast (juce::Colour (colour), juce::Colour (most->first)));
    return best;
}

void expectSignsStandOut (juce::Component& view, const juce::Image& picture, int& signs)
{
    for (auto* component : descendants (view))
    {
        const auto isSign = dynamic_cast<PXImageButton*> (component) != nullptr
                            || dynamic_cast<PXImageRotarySlider*> (component) != nullptr;
        // Hidden ones have no picture.
        auto isSeen = isSign;
        for (auto* each = component; isSeen && each != &view; each = each->getParentComponent())
            isSeen = each->isVisible();
        if (!isSeen)
            continue;
        const auto area = (view.getLocalArea (component, component->getLocalBounds()).toFloat() * scale)
                              .toNearestInt()
                              .getIntersection (picture.getBounds());
        if (area.isEmpty())
            continue;
        ++signs;
        EXPECT_GE (signContrast (picture, area), leastOfSign)
            << component->getName() << component->getComponentID() << " at "
            << view.getLocalArea (component, component->getLocalBounds()).toString();
    }
}

/** The states in which everything is looked at. */
enum class State
{
    rest,
    lit,
    disabled
};

void put (juce::Component& view, State state)
{
    for (auto* component : descendants (view))
    {
        if (auto* button = dynamic_cast<juce::Button*> (component))
            if (dynamic_cast<juce::TabBarButton*> (component) == nullptr)
                button->setToggleState (state == State::lit, juce::dontSendNotification);
        if (auto* button = dynamic_cast<PXImageButton*> (component))
            button->setToggleState (state == State::lit);
    }
    view.setEnabled (state != State::disabled);
}
}

TEST (Contrast, EveryTextAndSignOfTheWindowStandsOutAtRestLitAndDisabled)
{
    UiBench bench;
    bench.engine.settings.editor[EditorPreference::fourDeckMode] = 1;
    bench.editor->setSize (1280, 900);
    bench.load (bench.halfLoudTrack(), 0);
    int letters = 0, signs = 0;
    for (int tab = 0; tab < GlobalComponent::tabs; ++tab)
    {
        bench.editor->globalBlock().setCurrentTabIndex (tab);
        for (auto& panel : bench.engine.settings.deckSetup[0].panelsLeft)
            panel = static_cast<int8_t> (tab);
        bench.refresh();
        for (const auto state : { State::rest, State::lit, State::disabled })
        {
            SCOPED_TRACE (testing::Message() << "tab " << tab << ", state " << static_cast<int> (state));
            put (*bench.editor, state);
            const auto picture = expectReadable (*bench.editor, letters);
            expectSignsStandOut (*bench.editor, picture, signs);
        }
        put (*bench.editor, State::rest);
    }
    EXPECT_GT (letters, 10000);
    EXPECT_GT (signs, 1000);
}

TEST (Contrast, EveryTextOfThePreferencesStandsOutAtRestLitAndDisabled)
{
    UiBench bench;
    const HeaderActions actions;
    Preferences preferences (bench.engine, actions, [] {});
    preferences.setVisible (true);
    int letters = 0;
    for (int page = 0; page < preferences.pageTexts().size(); ++page)
        for (const auto state : { State::rest, State::lit, State::disabled })
        {
            SCOPED_TRACE (testing::Message()
                          << preferences.pageTexts()[page] << ", state " << static_cast<int> (state));
            preferences.showPage (page);
            if (auto* view = dynamic_cast<PollingView*> (&preferences.pageAt (page)))
                view->refresh();
            put (preferences, state);
            expectReadable (preferences, letters);
        }
    EXPECT_GT (letters, 5000);
}
