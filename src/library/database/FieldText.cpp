#include "library/database/SongDatabase.h"
#include "library/sql/StoredText.h"

#include <array>
#include <limits>

namespace
{
juce::String dateText (const juce::String& secondsText)
{
    const auto seconds = secondsText.getLargeIntValue();
    // Beyond this the milliseconds leave their 64 bits.
    constexpr auto latest = std::numeric_limits<int64_t>::max() / 1000;
    return seconds <= 0 || seconds > latest ? juce::String()
                                            : juce::Time (seconds * 1000).toString (true, false);
}

juce::String sizeText (const juce::String& bytesText)
{
    const auto bytes = static_cast<float> (bytesText.getLargeIntValue());
    auto unit = 1.0f;
    for (const auto* name : { " B", " KB", " MB", " GB" })
    {
        if (bytes < unit * 1024.0f)
            return StoredText::withTwoDecimals (bytes / unit) + name;
        unit *= 1024.0f;
    }
    return "0.0 MB";
}

juce::String timeText (const juce::String& secondsText)
{
    const auto seconds = secondsText.getLargeIntValue();
    const auto twoDigits = [] (int64_t value) { return StoredText::ofInteger (value).paddedLeft ('0', 2); };
    const auto end = ":" + twoDigits (seconds % 60);
    if (seconds < 3600)
        return StoredText::ofInteger (seconds / 60) + end;
    return StoredText::ofInteger (seconds / 3600) + ":" + twoDigits (seconds / 60 % 60) + end;
}

juce::String unless (const juce::String& unknown, const juce::String& text)
{
    return text == unknown ? juce::String() : text;
}
}

juce::String SongDatabase::fieldText (const SongRecord& record, SongField field)
{
    if (!hasColumn (field))
        return {};
    const auto& text = record[columnOf (field)];
    switch (field)
    {
    case SongField::year:
    case SongField::trackNumber:
        return unless ("0", text);
    case SongField::bpm:
        return unless ("0.00", text);
    case SongField::dateAdded:
    case SongField::lastPlayed:
    case SongField::dateCreated:
    case SongField::dateModified:
        return dateText (text);
    case SongField::filesize:
        return sizeText (text);
    case SongField::time:
        return timeText (text);
    default:
        return text;
    }
}
