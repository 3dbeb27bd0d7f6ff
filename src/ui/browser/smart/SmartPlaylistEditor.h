#pragma once

#include "library/smart/SmartPlaylist.h"
#include "support/language/Translate.h"
#include "ui/browser/smart/SmartRuleRow.h"
#include "ui/manual/HelpTopic.h"

#include <memory>
#include <vector>

/** Edits the rules of a smart playlist. Message thread. */
class SmartPlaylistEditor : public juce::Component, public HelpTopicOwner
{
public:
    /** @param saved   takes the query that is made of the rules, and the document that fills this editor again
        @param close   called by both buttons */
    SmartPlaylistEditor (const SmartPlaylist&,
                         std::function<void (const juce::String& sql, const juce::String& rules)> saved,
                         std::function<void()> close);

    HelpTopic helpTopic() const override { return { "library", "playlists" }; }

    /** The rules as they stand. */
    SmartPlaylist playlist() const;

    void paint (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void resized() override;

private:
    void add (const SmartRule&);
    void save();

    juce::ComboBox matchBox, orderBox;
    juce::ToggleButton limitBox { tr ("Limit results to:") };
    juce::TextEditor limit;
    juce::Label matchLabel { {}, tr ("Songs that match") }, selectedBy { {}, tr ("items, selected by") },
        hint;
    PXTextButton addButton { tr ("ADD RULE") }, saveButton { tr ("SAVE") }, cancelButton { tr ("CANCEL") };
    juce::Viewport viewport;
    juce::Component rows;
    std::vector<std::unique_ptr<SmartRuleRow>> rules;
    const std::function<void (const juce::String&, const juce::String&)> onSave;
    const std::function<void()> onClose;
};
