#include "ui/browser/table/CellEditor.h"

#include <utility>

namespace
{
constexpr int longestText = 1000, longestNumber = 8;

bool isNumber (SongField field)
{
    return field == SongField::year || field == SongField::trackNumber || field == SongField::bpm;
}
}

CellEditor::CellEditor (const juce::String& text, const juce::Font& font, SongField field,
                        std::function<void (std::optional<juce::String>)> e)
    : before (text),
      ended (std::move (e))
{
    setFont (font);
    setText (text, false);
    if (isNumber (field))
        setInputRestrictions (longestNumber, field == SongField::bpm ? "0123456789." : "0123456789");
    else
        setInputRestrictions (longestText);
    setSelectAllWhenFocused (true);
    onReturnKey = [this] { end (true); };
    onEscapeKey = [this] { end (false); };
    onFocusLost = [this] { end (false); };
}

void CellEditor::end (bool isTaken)
{
    if (ended == nullptr)
        return;
    const auto text = getText().trim();
    std::exchange (ended, nullptr) (isTaken && text != before ? std::optional (text) : std::nullopt);
}
