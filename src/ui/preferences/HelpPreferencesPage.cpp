#include "ui/preferences/HelpPreferencesPage.h"

namespace
{
constexpr TextSection helpTexts[] {
    { "The first mix",
      "Drop a track on deck A, or pick one in the browser and press Return. Press Play. Load a second track "
      "on deck "
      "B, light its PFL button and listen to it on the headphones. Light its SYNC button: it takes deck A's "
      "tempo "
      "and beat. Press Play, and move the crossfader from left to right over sixteen beats." },
    { "Beats by hand", "Leave SYNC dark, move the pitch fader until the beats keep their distance, and nudge "
                       "with the arrows beside "
                       "it until they fall together. The grid panel moves a grid that lies wrong; TAP finds "
                       "the tempo from your "
                       "finger." },
    { "Cues and loops", "Cue sets the point to come back to while the deck stands; held, it plays from "
                        "there. The numbers set hot "
                        "cues and jump to them. With SNAP lit they lie on the beat. A loop of so many beats "
                        "begins at the place of "
                        "the play head; its length halves and doubles while it turns." },
    { "Effects and knobs", "Each deck has three effect units in the FX page. A SmartKnob moves several of "
                           "them at once; double click it "
                           "to choose what it does." },
    { "Pads", "A Slicegate pad bends time and volume in beats while you hold it. The SAMPLER page has "
              "sixteen pads for "
              "drops and loops; its Ghost catches a loop from a playing deck." },
    { "Control records",
      "On the Timecode page choose the deck's input and the record, and play it: the page says what it found "
      "and "
      "what is wrong with the signal. Absolute follows the needle's place, Relative its movement alone." },
    { "Controllers", "On the page Remote MIDI Control switch the controller's ports on, open the mapping "
                     "editor, double click a "
                     "row and move the control." },
    { "Recording", "The red button records the master into the file of the page File Management." },
    { "In a host", "The plug-in has fourteen outputs: the master, the headphones, the four decks and the "
                   "sampler. Each command "
                   "is a parameter and can be automated." },
    { "More", "A right click on a control shows what else it can do. The window Keys lists the keyboard. The "
              "tooltip of a control says what it does." },
};
}

HelpPreferencesPage::HelpPreferencesPage() : TextPage (helpTexts) {}
