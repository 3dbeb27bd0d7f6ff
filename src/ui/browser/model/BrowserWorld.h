#pragma once

#include "engine/CPlatterdex.h"
#include "session/Session.h"
#include "session/browse/LibraryRoom.h"
#include "support/language/Translate.h"

#include <juce_core/juce_core.h>

/** The parts of the program that a browser's views work with. */
struct BrowserWorld
{
    CPlatterdex& engine;
    Session* session = nullptr;  ///< keeps the preferences
    LibraryRoom* room = nullptr; ///< null while there is no library

    /** Null where nobody can be asked. */
    Prompts* prompts() const { return session != nullptr ? session->prompts.get() : nullptr; }

    bool hasFourDecks() const { return engine.settings.editor[EditorPreference::fourDeckMode] != 0; }
    int decks() const { return hasFourDecks() ? 4 : 2; }

    juce::String preference (const juce::String& name, const juce::String& byDefault = {}) const
    {
        return session != nullptr ? session->preferences().get (name, byDefault) : byDefault;
    }

    void setPreference (const juce::String& name, const juce::String& value) const
    {
        if (session != nullptr)
            juce::ignoreUnused (session->preferences().set (name, value)); // holds until the end, then
    }

    /** Shows the sentence of a fault, if there is one. */
    void say (const juce::String& sentence) const
    {
        if (sentence.isNotEmpty() && prompts() != nullptr)
            prompts()->notify (tr ("Library"), sentence);
    }
};
