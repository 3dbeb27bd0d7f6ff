#pragma once

#include "support/language/Translate.h"
#include "ui/header/HeaderActions.h"
#include "ui/preferences/PreferencesList.h"
#include "ui/widgets/PXTextButton.h"
#include "ui/window/ToolWindows.h"

class CPlatterdex;

/** The dialog of the preferences: a list of pages on the left, the chosen one on the right, and a field that looks for a
    word on all of them. Every control acts at once; there is nothing to apply and nothing to take back. Message thread. */
class Preferences : public juce::Component
{
public:
    static constexpr int width = 890, height = 600;

    /** @param actions   of the window; its pages that can be made come into the list
        @param close     closes the dialog */
    Preferences (CPlatterdex&, const HeaderActions&, std::function<void()> close);
    ~Preferences() override;

    /** Opens the dialog in a window of its own. */
    static void open (ToolWindows&, juce::Component& opener, CPlatterdex&, const HeaderActions&);

    /** The list's texts, in order. */
    juce::StringArray pageTexts() const;

    /** Shows a page. @param page   0 to the number of pages less 1 */
    void showPage (int page);

    /** Shows the page of a title in English, if there is one. */
    void showPageNamed (const char* title);

    int shownPage() const noexcept { return shown; }

    /** A page, made if it hasn't been seen yet. */
    juce::Component& pageAt (int page);

    /** Leaves the pages in the list that have all of the words. */
    void search (const juce::String& words);

    void paint (juce::Graphics&) override;
    void paintOverChildren (juce::Graphics&) override;
    void resized() override;
    void focusGained (FocusChangeType) override { list.takeFocus(); }

private:
    struct Page
    {
        juce::String text;
        std::function<std::unique_ptr<juce::Component>()> make;
        std::unique_ptr<juce::Component> component;
    };

    /** Asks first. */
    void restoreDefaults();
    void fitPage();

    CPlatterdex& engine;
    std::vector<Page> pages;
    int shown = -1;
    juce::TextEditor searchField;
    PreferencesList list;
    juce::Viewport viewport;
    PXTextButton defaults { tr ("Default Settings") }, closeButton { tr ("Close") };
};
