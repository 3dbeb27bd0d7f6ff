#pragma once

#include "support/language/PluralRule.h"

#include <juce_core/juce_core.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/** The texts of one language: English text to translation, as gettext's .mo files hold them. Immutable; any thread. */
class MessageCatalogue
{
public:
    /** Reads a .mo file of either byte order, in UTF-8. A text that isn't UTF-8 is left out, so that it stays English.
        @returns nothing if this is no such file, or one that is cut short */
    static std::optional<MessageCatalogue> read (std::span<const std::byte> file);

    /** @returns the translation, or null if there is none */
    const juce::String* find (std::string_view english) const;

    /** The form of a sentence with a number, of the English one that begins with `one`. @returns null if there is none */
    const juce::String* findPlural (std::string_view one, uint64_t n) const;

    /** The language's own name, "Deutsch", as the header "X-Language-Name" has it; empty without one. */
    const juce::String& name() const noexcept { return ownName; }

    size_t size() const noexcept { return texts.size(); }

private:
    struct Hash
    {
        using is_transparent = void;
        size_t operator() (std::string_view text) const noexcept
        {
            return std::hash<std::string_view> {}(text);
        }
    };

    using Forms = std::vector<juce::String>; ///< one, or those of a plural

    void readHeader (std::string_view header);

    std::unordered_map<std::string, Forms, Hash, std::equal_to<>> texts;
    PluralRule plural;
    juce::String ownName;
};
