#pragma once

#include "engine/CPlatterdex.h"
#include "engine/CommandTable.h"
#include "session/Session.h"
#include "shared/TemporaryFolder.h"
#include "ui/CPlatterdexVstEditor.h"

#include <stdexcept>

/** Every component below another one, in any depth. */
std::vector<juce::Component*> descendants (juce::Component&);

/** A whole engine in a temporary folder with its editor, without a display and without an audio device. */
class UiBench
{
public:
    explicit UiBench (std::shared_ptr<Prompts> = {});

    /** A stereo WAV at 44.1 kHz: a loud tone for the first half, nothing for the second. */
    juce::File halfLoudTrack (double seconds = 4.0) const;

    /** Loads a file and waits until the job is done and the editor has heard of it. */
    void load (const juce::File&, int deck);

    /** Runs the engine for one block. */
    void render (int frames = 512);

    /** Lets every view of the editor poll once. */
    void refresh();

    /** The component as it would stand on the screen. Written as "<name>@<scale>.png", at scale 1 "<name>.png", into the folder of the environment's
        PX_PICTURES, if there is one. */
    static juce::Image picture (juce::Component&, const juce::String& name, float scale = 1.0f);

    /** Waits until a deck is done with its load and the editor has heard of it. */
    void wait (int deck);

    /** Closes the editor and opens another. */
    void reopen();

    /** The first component of a type below another one, or that of a name. */
    template <typename Type>
    Type& find (juce::Component& root, const juce::String& name = {})
    {
        for (auto* component : descendants (root))
            if (auto* found = dynamic_cast<Type*> (component);
                found != nullptr
                && (name.isEmpty() || component->getComponentID() == name || component->getName() == name))
                return *found;
        throw std::runtime_error (("there is no " + name).toStdString());
    }

    juce::uint32 now = 0; ///< ms of the engine's clock; each refresh() takes a calm turn
    TemporaryFolder folder;
    CPlatterdex engine;
    std::shared_ptr<Session> session; ///< of the same folder
    std::unique_ptr<CPlatterdexVstEditor> editor;
};

/** Presses, and releases, the left button (or another) of a mouse in the middle of a component. */
juce::MouseEvent mouseAt (juce::Component&, juce::Point<float>,
                          juce::ModifierKeys = juce::ModifierKeys::leftButtonModifier, int clicks = 1);

/** Presses and releases a button of the mouse in the middle of a component. */
void press (juce::Component&, juce::ModifierKeys = juce::ModifierKeys::leftButtonModifier);
void release (juce::Component&, juce::ModifierKeys = juce::ModifierKeys::leftButtonModifier);

/** True for a button without a command that does something all the same. */
bool hasOwnAction (juce::Component&);
