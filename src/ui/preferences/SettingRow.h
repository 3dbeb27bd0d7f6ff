#pragma once

#include "ui/widgets/PXTextButton.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <span>

/** A value that a row shows and changes. */
struct SettingValue
{
    std::function<double()> read;
    std::function<void (double)> write;
    double rest = 0.0; ///< the value at first, to which a double click goes back
};

/** One line of a page of the preferences: a caption and a control. It keeps no copy of the value: refresh() reads it.
    Message thread. */
class SettingRow : public juce::Component
{
public:
    static constexpr int height = 28, captionWidth = 220;

    /** @param caption   empty where the control carries its own text */
    explicit SettingRow (juce::String caption);

    /** Shows the value in force, unless a hand is on the control. */
    virtual void refresh() = 0;

    const juce::String& caption() const noexcept { return text; }

    void paint (juce::Graphics&) override;
    void resized() override;

protected:
    /** Takes the control in. @param tip   shown over the control */
    void hold (juce::Component& control, juce::SettableTooltipClient&, const juce::String& tip);

    /** Lays out what stands right of the caption. */
    virtual void place (juce::Rectangle<int> area) = 0;

private:
    const juce::String text;
};

/** The rows that there are. */
namespace SettingRows
{
/** A switch. @param isInverted   on stands for 0 */
std::unique_ptr<SettingRow> toggle (const juce::String& text, const juce::String& tip, SettingValue,
                                    bool isInverted = false);

/** A choice of one entry. @param first, step   the value of the first entry, and from one to the next */
std::unique_ptr<SettingRow> choice (const juce::String& caption, const juce::String& tip, SettingValue,
                                    const juce::StringArray& entries, double first = 0.0, double step = 1.0);

/** A number. @param factor   from the value to the number that is shown with its unit */
std::unique_ptr<SettingRow> slider (const juce::String& caption, const juce::String& tip, SettingValue,
                                    juce::Range<double>, double interval, double factor,
                                    const juce::String& unit);

/** A file or folder: a field and a button that asks for one. */
struct PathValue
{
    std::function<juce::String()> read;
    std::function<void (const juce::String&)> write;
    std::function<void (std::function<void (const juce::File&)> chosen)> browse;
};
std::unique_ptr<SettingRow> path (const juce::String& caption, const juce::String& tip, PathValue);

/** A text that tells something. */
std::unique_ptr<SettingRow> text (const juce::String& caption, std::function<juce::String()> read);
}
