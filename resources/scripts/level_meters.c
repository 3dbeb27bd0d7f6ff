// Level meters of the decks and the master on the lamps of a controller.
//
// A meter is one controller number on channel 1; its value is the number of lamps that are lit, 0 to LAMPS.

#include "px_commands.h"

const int CC_DECK_A = 0x50; // decks B to D are the next three
const int CC_MASTER_LEFT = 0x54;
const int CC_MASTER_RIGHT = 0x55;
const int LAMPS = 12;

// A meter falls more slowly than it rises, so that the eye can follow: the level that is shown of each
array<float> shown (6);

void OnTimerCallback()
{
    for (int deck = 0; deck < 4; deck++)
        Meter (deck, CC_DECK_A + deck, get (LEVEL_A + deck));
    Meter (4, CC_MASTER_LEFT, get (MASTER_LEVEL_1));
    Meter (5, CC_MASTER_RIGHT, get (MASTER_LEVEL_2));
}

void Meter (int meter, int control, float level)
{
    float fallen = shown[meter] - 0.08f;
    shown[meter] = level > fallen ? level : fallen;
    if (shown[meter] < 0.0f)
        shown[meter] = 0.0f;
    sendMidiMessage (0xB0, control, int (shown[meter] * LAMPS + 0.5f));
}

void OnMidiMessageReceived (const string &in name, int status, int data, int value) {}

void OnStart() {}

void OnStop()
{
    for (int control = CC_DECK_A; control <= CC_MASTER_RIGHT; control++)
        sendMidiMessage (0xB0, control, 0);
}
