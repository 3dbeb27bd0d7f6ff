#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <vector>

class CPlatterdex;

/** A page of the centre block that shows one view a deck, one below the other at equal heights. */
class DeckStackPage : public juce::Component
{
public:
    void resized() override;

protected:
    enum class Letters
    {
        own, ///< each view shows its deck's letter itself
        over ///< they are painted over the views' corners
    };

    explicit DeckStackPage (Letters l = Letters::own) : letters (l) {}
    void paintOverChildren (juce::Graphics&) override;

    template <typename View>
    void addViews (CPlatterdex& engine, int decks)
    {
        for (int deck = 0; deck < decks; ++deck)
        {
            views.push_back (std::make_unique<View> (engine, deck));
            addAndMakeVisible (*views.back());
        }
    }

private:
    const Letters letters;
    std::vector<std::unique_ptr<juce::Component>> views;
};

/** The page "FX". */
class Fx2DecksComponent : public DeckStackPage
{
public:
    explicit Fx2DecksComponent (CPlatterdex&);
};

class Fx4DecksComponent : public DeckStackPage
{
public:
    explicit Fx4DecksComponent (CPlatterdex&);
};

/** The page "WAV". */
class Peakscope2DecksComponent : public DeckStackPage
{
public:
    explicit Peakscope2DecksComponent (CPlatterdex&);
};

class Peakscope4DecksComponent : public DeckStackPage
{
public:
    explicit Peakscope4DecksComponent (CPlatterdex&);
};

/** The page "ENV". */
class Slicegate2DecksComponent : public DeckStackPage
{
public:
    explicit Slicegate2DecksComponent (CPlatterdex&);
};

class Slicegate4DecksComponent : public DeckStackPage
{
public:
    explicit Slicegate4DecksComponent (CPlatterdex&);
};

/** The page "VST". */
class VstHost2DecksComponent : public DeckStackPage
{
public:
    explicit VstHost2DecksComponent (CPlatterdex&);
};

class VstHost4DecksComponent : public DeckStackPage
{
public:
    explicit VstHost4DecksComponent (CPlatterdex&);
};
