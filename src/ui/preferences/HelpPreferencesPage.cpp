#include "ui/preferences/HelpPreferencesPage.h"

#include "support/language/Translate.h"

namespace
{
constexpr int buttonWidth = 130;

constexpr TextSection helpTexts[] {
    { N_ ("The first mix"),
      N_ ("Drop a track on deck A, or pick one in the browser and press Return. Press Play. Load a second "
          "track on deck B, light the headphones of its channel and listen to it there. Light its SYNC "
          "button: it takes deck A's tempo and beat. Press Play, and move the crossfader from left to right "
          "over sixteen beats.") },
    { N_ ("Beats by hand"),
      N_ ("Leave SYNC dark, move the pitch fader until the beats keep their distance, and hold - or + beside "
          "the play button until they fall together. The grid panel moves a grid that lies wrong; TAP finds "
          "the tempo from your finger.") },
    { N_ ("Cues and loops"),
      N_ ("Cue sets the point to come back to while the deck stands; held, it plays from there. The numbers "
          "set hot cues and jump to them. With Snap lit they lie on the beat. A loop begins at the place of "
          "the play head; its length halves and doubles while it turns.") },
    { N_ ("Effects and knobs"),
      N_ ("Each deck has a filter and three effects on the page FX. A SmartKnob moves several of them at "
          "once; EDIT opens the curves that say what it does.") },
    { N_ ("Pads"),
      N_ ("A Slicegate pad bends time and volume in beats while you hold it. The SAMPLER page has sixteen "
          "pads for drops and loops; its REC catches a loop from a playing deck.") },
    { N_ ("Control records"),
      N_ ("On the Timecode page choose the deck's input and the record, and play it: the page says what it "
          "found and what is wrong with the signal. Absolute follows the needle's place, Relative its "
          "movement alone.") },
    { N_ ("Controllers"), N_ ("A controller that is known is offered when it is plugged in. For any other "
                              "open the mapping editor "
                              "on the page Remote MIDI Control, double click a row and move the control.") },
    { N_ ("Recording"),
      N_ ("The round button in the header records the master. The page File Management says where to.") },
    { N_ ("In a host"),
      N_ ("The plug-in has fourteen outputs: the master, the headphones, the four decks and the "
          "sampler. Each command is a parameter and can be automated.") },
    { N_ ("More"),
      N_ ("F1 opens the manual at the control under the mouse. A tooltip says what a control does, and a "
          "right click on many shows what else they can do. The window Keys lists the keyboard.") },
};
}

HelpPreferencesPage::HelpPreferencesPage (std::function<void()> openManual)
    : TextPage (helpTexts),
      manualButton (tr ("Manual"))
{
    manualButton.setComponentID ("_manualButton");
    manualButton.setTooltip (
        tr ("Opens the manual: a page for each task. F1 opens it at the control under the mouse."));
    manualButton.onClick = std::move (openManual);
    addChildComponent (manualButton);
    manualButton.setVisible (manualButton.onClick != nullptr);
    HelpPreferencesPage::resized();
}

void HelpPreferencesPage::resized()
{
    TextPage::resized();
    manualButton.setBounds (getWidth() - margin - buttonWidth, margin, buttonWidth, titleHeight);
}
