// A grid of eight by eight pads with coloured lamps.
//
// A pad sends the note 16 * row + column on channel 1, counted from the top left; its lamp has the same note, and the value
// is a colour. Each pair of rows is a deck, A to D from the top: its hot cues above, play and loops below.
//
//   cue 1    cue 2    cue 3    cue 4    cue 5    cue 6    cue 7    cue 8
//   play     sync     half     loop     double   leap     PFL      shift
//
// Shift is held: with it a cue's pad deletes the cue.

#include "px_commands.h"

const int OFF = 0;
const int RED = 5;
const int AMBER = 9;
const int GREEN = 21;
const int BLUE = 45;
const int GREY = 1;

// One colour a deck
array<int> deckColours = { BLUE, AMBER, GREEN, RED };

// A shift button for each deck: is it held?
array<bool> isShifted (4);

// Counts the calls of the timer, for pads that blink
int ticks = 0;

// The commands of the second row, by column
array<int> functions = { PLAY_PAUSE_A, SYNC_A, LOOP_HALF_A, LOOP_A, LOOP_DOUBLE_A, LEAP_A, PFL_A };

void OnMidiMessageReceived (const string &in name, int status, int data, int value)
{
    if (status != 0x90)
        return;
    int row = data / 16;
    int column = data % 16;
    if (row > 7 || column > 7)
        return;

    int deck = row / 2;
    bool isDown = value > 0;
    if (row % 2 == 0)
    {
        if (!isDown)
            return;
        int first = isShifted[deck] ? DELETE_HOT_CUE_1_A : HOT_CUE_1_A;
        set (first + 4 * column + deck);
    }
    else if (column == 7)
        isShifted[deck] = isDown;
    else if (isDown)
        set (functions[column] + deck);
}

void OnTimerCallback()
{
    ticks++;
    for (int deck = 0; deck < 4; deck++)
    {
        int top = 32 * deck;
        int colour = deckColours[deck];
        for (int slot = 0; slot < 8; slot++)
        {
            bool isSet = get (HOT_CUE_1_A + 4 * slot + deck) > 0.0f;
            // A cue that shift would delete blinks red, five times a second.
            bool isLit = isSet && (!isShifted[deck] || ticks % 4 < 2);
            sendMidiMessage (0x90, top + slot, isLit ? (isShifted[deck] ? RED : colour) : OFF);
        }
        for (int column = 0; column < 7; column++)
        {
            bool isOn = get (functions[column] + deck) > 0.0f;
            sendMidiMessage (0x90, top + 16 + column, isOn ? GREEN : GREY);
        }
        sendMidiMessage (0x90, top + 16 + 7, isShifted[deck] ? RED : GREY);
    }
}

void OnStart() {}

void OnStop()
{
    for (int note = 0; note < 128; note++)
        sendMidiMessage (0x90, note, OFF);
}
