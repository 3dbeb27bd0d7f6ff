#pragma once

#include "library/songs/SongField.h"
#include "support/language/Translate.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/PXImageButton.h"

#include <functional>
#include <optional>
#include <vector>

/** The search field with its cancel button, the menu of the fields that are searched, and the filters of tempos that fit the
    master's and of grids that are to be checked. A pause in typing, Return or a choice in a menu asks. Message thread. */
class SearchEditor : public juce::Component, private juce::Timer
{
public:
    static constexpr int typingPauseMs = 40;

    SearchEditor();

    /** Asked for the songs that are to be shown. */
    std::function<void()> onSearch;
    std::function<void()> onFields; ///< other fields are searched: they are to be kept
    std::function<void()> onLeave;  ///< Return, Down or Escape: the keyboard is to go to the songs

    /** Shown while nothing is typed. */
    void setHint (const juce::String&);

    juce::String text() const { return field.getText(); }
    void setText (const juce::String&);

    const std::vector<SongField>& fields() const noexcept { return chosen; }
    void setFields (std::vector<SongField>);

    /** Percent by which a tempo may differ from the master's; nothing while all tempos are shown. */
    std::optional<double> fitPercent() const noexcept { return fit; }
    void setFitPercent (std::optional<double>);

    /** True while only songs are to be shown whose grid is doubtful. */
    bool wantsGridsToCheck() const { return checkButton.getToggleState(); }

    /** Puts the keyboard into the field. */
    void takeKeyboard() { field.grabKeyboardFocus(); }
    bool hasKeyboard() const { return field.hasKeyboardFocus (true); }

    void paint (juce::Graphics&) override;
    void resized() override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    void timerCallback() override;
    void cancel();
    void askNow();
    void fillFields (juce::PopupMenu&);
    void fillFits (juce::PopupMenu&);

    juce::TextEditor field { "_searchEditor" };
    PXTextButton cancelButton;
    MenuButton fieldsButton { tr ("SEARCH IN") };
    MenuButton fitButton { tr ("FITS MASTER") };
    PXTextButton checkButton;
    std::vector<SongField> chosen;
    std::optional<double> fit;
};
