#include "ui/preferences/HelpPreferencesPage.h"

#include "support/language/Translate.h"

namespace
{
constexpr int buttonWidth = 130;

constexpr TextSection helpTexts[] {
    { N_ ("The first mix"),
      N_ ("Drop a track on deck A, or pick one in the browser and press Return. Press Play. Load a second "
          "track "
          "on deck "
          "B, light its PFL button and listen to it on the headphones. Light its SYNC button: it takes deck "
          "A's "
          "tempo "
          "and beat. Press Play, and move the crossfader from left to right over sixteen beats.") },
    { N_ ("Beats by hand"),
      N_ ("Leave SYNC dark, move the pitch fader until the beats keep their distance, and nudge "
          "with the arrows beside "
          "it until they fall together. The grid panel moves a grid that lies wrong; TAP finds "
          "the tempo from your "
          "finger.") },
    { N_ ("Cues and loops"),
      N_ ("Cue sets the point to come back to while the deck stands; held, it plays from "
          "there. The numbers set hot "
          "cues and jump to them. With SNAP lit they lie on the beat. A loop of so many beats "
          "begins at the place of "
          "the play head; its length halves and doubles while it turns.") },
    { N_ ("Effects and knobs"),
      N_ ("Each deck has three effect units in the FX page. A SmartKnob moves several of "
          "them at once; double click it "
          "to choose what it does.") },
    { N_ ("Pads"),
      N_ ("A Slicegate pad bends time and volume in beats while you hold it. The SAMPLER page has "
          "sixteen pads for "
          "drops and loops; its Ghost catches a loop from a playing deck.") },
    { N_ ("Control records"), N_ ("On the Timecode page choose the deck's input and the record, and play it: "
                                  "the page says what it found "
                                  "and "
                                  "what is wrong with the signal. Absolute follows the needle's place, "
                                  "Relative its movement alone.") },
    { N_ ("Controllers"),
      N_ ("On the page Remote MIDI Control switch the controller's ports on, open the mapping "
          "editor, double click a "
          "row and move the control.") },
    { N_ ("Recording"), N_ ("The red button records the master into the file of the page File Management.") },
    { N_ ("In a host"),
      N_ ("The plug-in has fourteen outputs: the master, the headphones, the four decks and the "
          "sampler. Each command "
          "is a parameter and can be automated.") },
    { N_ ("More"),
      N_ ("A right click on a control shows what else it can do. The window Keys lists the keyboard. The "
          "tooltip of a control says what it does.") },
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
