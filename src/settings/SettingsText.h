#pragma once

#include <juce_core/juce_core.h>

#include <array>

/** A text of the settings block: 1024 bytes of UTF-8 with a terminating zero.

    It is plain bytes and locks nothing. Where one thread changes a text that another reads, encode and decode outside
    the callback lock, and copy the whole SettingsText under it. */
class SettingsText
{
public:
    /** Bytes that a text can hold beside its terminator. */
    static constexpr size_t maxBytes = 1023;

    SettingsText() = default;
    explicit SettingsText (const juce::String& text) { set (text); }

    /** The text. Whatever the bytes are it is well formed: without a terminator it ends at 1023 bytes, and bytes that
        are not UTF-8 are taken as Latin-1. */
    juce::String get() const;

    /** Stores the text, cut at 1023 bytes or before the character that would go beyond, and zeros behind it. */
    void set (const juce::String&);

private:
    std::array<char, maxBytes + 1> bytes {};
};

static_assert (sizeof (SettingsText) == 1024);
