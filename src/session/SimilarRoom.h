#pragma once

#include "session/Session.h"
#include "session/similar/KeyText.h"
#include "session/similar/Recommendations.h"

/** All that a session knows of similar songs: whose sound is known, the recommendations, and keys for the library. One per
    session; message thread, but for what says otherwise. */
class SimilarRoom
{
public:
    /** Made when it is first asked for; it ends with the session. */
    static SimilarRoom& of (Session&);

    /** Ends the room of a session that goes, if it has one. */
    static void end (Session&);

    SimilarRoom (Session&, const juce::File& library);

    /** The songs that fit another one; null while the session has no browser(). */
    Recommendations* recommendations();

    /** The weights of sound, tempo and key that are preferred. */
    SimilarSongs::Weights weights() const;

    /** The value of SimilarSongs::priorities that is preferred. */
    juce::String priority() const;

    /** Prefers another one, and orders the recommendations by it. */
    void setPriority (const juce::String& value);

    /** True if automix goes on with songs that fit when its list has come to its end. */
    bool continuesAutomix() const;
    void setContinuesAutomix (bool);

    /** The notation in which keys are written into the library from now on. */
    KeyText::Notation keyNotation() const;
    void setKeyNotation (KeyText::Notation);

    /** Writes the key of a song into the library if it has none there, in the notation that is preferred; the file's tag
        stays. Any thread that may block. @param key   as SoundFacts tells it */
    void noteKey (const juce::String& path, int key);

    /** Waits until all keys are noted. For programs without a message loop, and before the library is closed. */
    void settle();

private:
    void writeKey (const juce::String& path, int key);

    Session& session;
    std::unique_ptr<Recommendations> list;
    MessageCalls calls;
    Worker notes { "similarNotes" };

public:
    /** The tracks whose sound is known. Any thread that may block. */
    const std::shared_ptr<SoundSession> sounds; ///< last: it calls noteKey()
};
