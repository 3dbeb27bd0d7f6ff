// The surface of a controller: its controls and lamps by rows, as scripts have them that
//
//     platterdex controllers --script MODEL FILE
//
// has written. The program writes this file anew when it starts: changes are lost. A row of a control is
//
//     control (status, data, place, form, act, number);
//
// with the first two bytes of its messages, the deck or side that it belongs to, the way in which its values come, what it does,
// and the command, layer, deck or size of loop that it does it with. A row of a lamp is
//
//     lamp (status, data, place, light, number);
//
// with the first two bytes of what it is sent and the state that it shows. Both hold in the layer that inLayer() has named last.

enum Place { DECK_A, DECK_B, DECK_C, DECK_D, SIDE_LEFT, SIDE_RIGHT, SIDE_CHOSEN }

enum Form
{
    PRESS,           // above 0 pressed, 0 released
    ABSOLUTE,        // 0 to 127
    INVERTED,        // 127 to 0
    CENTRE_64,       // 0 to 127 with the rest at 64
    CENTRE_63,
    CENTRE_INVERTED, // 127 to 0 with the rest at 64
    FINE_16,         // 14 bits: the high half here, the low half 16 above
    FINE_32,
    BEND,            // 14 bits of a pitch bend
    BEND_INVERTED,
    TWOS_COMPLEMENT, // 1 to 63 on, 127 to 64 back; the first of the forms that come in steps
    TWOS_COMPLEMENT_INVERTED,
    CENTRED,         // value - 64
    SIGN,            // a step back below 64, else on
    EITHER_CENTRE,   // 33 to 95 as centred, others as two's complement
    BEHRINGER,       // the same, others turned round, 64 a step back
    STEP_ON,         // a message for each step
    STEP_BACK,
    CYCLIC_7,        // a counter of 7 bits that goes round
    CYCLIC_LOW_32,   // of 14 bits: the low half 32 above
    CYCLIC_LOW_BELOW // the low half one below
}

enum Act
{
    TRIGGER, // the command once
    HOLD,    // the command while held
    VALUE,   // the command's value by a place or by steps
    PITCH,   // the same of a pitch, which waits for a slider to come to it
    STEP,    // a step of the command
    CENTRE,  // the command's value to the middle
    FULL_OR_NONE,
    NEXT_OF_TEN,
    SEMITONE_DOWN,
    SEMITONE_UP,
    STORE_CUE,
    STOP,
    LOOP_BEATS, // a loop of the size of that index
    ROLL_BEATS,
    TIMECODE,
    TIMECODE_MODE,
    JOG,
    JOG_BEND,
    JOG_SCRATCH,
    JOG_SEARCH,
    TOUCH,
    SCRATCH_MODE, // the rest changes states of the surface
    SEARCH_MODE,
    SHIFT,
    PAD_LAYER,
    PAD_LAYER_FLIP,
    LAYER,
    LAYER_FLIP,
    SELECT_DECK,
    NEXT_DECK
}

enum Light
{
    READING, // the command reads above 0; of a ring or meter the reading itself
    FULL,    // the command reads above a half
    HELD,    // the button of that number is held
    PLAYING,
    SYNCED,
    LOOPING,
    LOOPING_BEATS, // in a loop of the size of that index
    AT_CENTRE,
    IN_TIMECODE,
    IN_TIMECODE_MODE,
    SHIFTED,
    IN_SCRATCH_MODE,
    IN_SEARCH_MODE,
    IN_PAD_LAYER,
    IN_PAD_LAYER_FLIP,
    IN_LAYER,
    IN_LAYER_FLIP,
    ON_DECK,
    ON_NEXT_DECK
}

enum Shape { ON_OR_OFF, ALONE, SCALE, SEGMENT, POINTER }

enum Law { BY_STEPS, BY_127, BY_POWER }

const int WHOLE = 4;      // what belongs to no deck, among the states of decks
const int BY_TURNS = 255; // blinks by being switched on and off
const int BUTTONS = 256;

const double KNOB_STEP = 0.05, PITCH_STEP = 0.0005, SEMITONE = 1.0 / 24.0;
const double MOST_KNOB_STEPS = 4.0, MOST_LIST_STEPS = 16.0;
const double SEARCH_STEP = 0.0003; // of the track, a tenth of a second of some five minutes

// States of the surface

array<int> shiftOf (5);
array<int> layerOf (5);
array<int> deckOfSide = { 0, 1, 0 };
array<int> scratchModeOf (4);
array<int> searchModeOf (4);
array<int> heldOf (4 * BUTTONS);
array<int> highHalfOf (16 * 128);
array<int> countOf (16 * 128); // of counters; one more than the last position, 0 before the first
array<int> movedAt (4);        // the tick of a pitch slider's last move
array<double> slidTo = { -1.0, -1.0, -1.0, -1.0 };
array<int> spunAt (4);
array<bool> isSpinning (4);
int ticks = 0; // of 50 ms

bool isShifted (int deck)
{
    return shiftOf[WHOLE] != 0 || shiftOf[deck] != 0;
}

int deckAt (int place)
{
    return place < SIDE_LEFT ? place : deckOfSide[place - SIDE_LEFT];
}

double limited (double x, double lowest, double highest)
{
    return x < lowest ? lowest : x > highest ? highest : x;
}

// Rows

int rowShift = -1, rowPads = -1, rowLayer = -1, rowGroup = 0;

// Names the layer of the rows that follow, -1 for any: without or with shift, the layer of the deck's pads, that of the surface.
void inLayer (int shift, int pads, int layer)
{
    rowShift = shift;
    rowPads = pads;
    rowLayer = layer;
}

class Row
{
    int status, data, place, number;
    int apart = 1; // the command's distance from deck to deck
    int shift, pads, layer;

    Row (int s, int d, int p, int n)
    {
        status = s;
        data = d;
        place = p;
        number = n;
        shift = rowShift;
        pads = rowPads;
        layer = rowLayer;
    }

    bool isHere (int deck)
    {
        return (shift < 0 || (shift != 0) == isShifted (deck)) && (pads < 0 || pads == layerOf[deck])
               && (layer < 0 || layer == layerOf[WHOLE]);
    }

    int commandOf (int deck)
    {
        return place < SIDE_LEFT ? number : number + apart * deck;
    }
}

class Control : Row
{
    int form, act, button = -1, group;
    bool isPressed = false, isRelative = false, isCoarse = false; // of the last message, as the rest
    double position = 0.0, steps = 0.0;

    Control (int s, int d, int p, int f, int a, int n)
    {
        super (s, d, p, n);
        form = f;
        act = a;
        group = rowGroup;
    }

    // Notes the button as held for lamps that show that.
    Control@ isButton (int which)
    {
        button = which;
        return this;
    }

    Control@ everyDeck (int distance)
    {
        apart = distance;
        return this;
    }

    // Acts on a message together with the row before.
    Control@ withLast()
    {
        group = controls.length() > 1 ? controls[controls.length() - 2].group : group;
        return this;
    }

    int lowHalf()
    {
        switch (form)
        {
        case FINE_16:
            return 16;
        case FINE_32:
        case CYCLIC_LOW_32:
            return 32;
        case CYCLIC_LOW_BELOW:
            return -1;
        }
        return 0;
    }

    bool hears (int byte)
    {
        int low = lowHalf();
        return (status & 0xF0) == 0xE0 || byte == data || (low != 0 && byte == data + low);
    }

    // Takes a place of 0 to 1.
    bool placed (int value, double where, bool isOf7Bits)
    {
        isPressed = value > 0;
        isRelative = false;
        isCoarse = isOf7Bits;
        position = where;
        steps = 0.0;
        return true;
    }

    bool moved (double by)
    {
        isPressed = by != 0.0;
        isRelative = true;
        isCoarse = false;
        position = 0.0;
        steps = by;
        return true;
    }

    // Takes a counter's new position. Its first one says nothing.
    bool turned (int now, int size)
    {
        int at = (status & 15) * 128 + data;
        int before = countOf[at] - 1;
        countOf[at] = now + 1;
        if (before < 0)
            return false;
        int way = (now - before + size) % size;
        return moved (way >= size / 2 ? way - size : way);
    }

    // Returns false for a message that is not yet a value.
    bool takes (int byte, int value)
    {
        if (form == BEND || form == BEND_INVERTED)
        {
            double where = (value * 128 + byte) / 16384.0;
            return placed (value, form == BEND ? where : 1.0 - where, false);
        }
        if (form == CYCLIC_7)
            return turned (value, 128);
        if (lowHalf() == 0)
            return form >= TWOS_COMPLEMENT ? moved (stepsOf (form, value)) : placed (value, placeOf (form, value), true);
        int at = (status & 15) * 128 + data;
        if (byte == data)
        {
            highHalfOf[at] = value;
            return false;
        }
        int whole = highHalfOf[at] * 128 + value;
        return form >= TWOS_COMPLEMENT ? turned (whole, 16384) : placed (highHalfOf[at], whole / 16384.0, false);
    }
}

int twosComplement (int value)
{
    return value < 64 ? value : value - 128;
}

double stepsOf (int form, int value)
{
    bool isAround64 = value > 32 && value < 96;
    switch (form)
    {
    case TWOS_COMPLEMENT:
        return twosComplement (value);
    case TWOS_COMPLEMENT_INVERTED:
        return -twosComplement (value);
    case CENTRED:
        return value - 64;
    case SIGN:
        return value < 64 ? -1 : 1;
    case EITHER_CENTRE:
        return isAround64 ? value - 64 : twosComplement (value);
    case BEHRINGER:
        return value == 64 ? -1 : isAround64 ? value - 64 : -twosComplement (value);
    case STEP_ON:
        return value > 0 ? 1 : 0;
    case STEP_BACK:
        return value > 0 ? -1 : 0;
    }
    return 0;
}

double aroundCentre (int value, int centre)
{
    return value <= centre ? 0.5 * value / centre : 0.5 + 0.5 * (value - centre) / (127.0 - centre);
}

double placeOf (int form, int value)
{
    switch (form)
    {
    case INVERTED:
        return 1.0 - value / 127.0;
    case CENTRE_64:
        return aroundCentre (value, 64);
    case CENTRE_63:
        return aroundCentre (value, 63);
    case CENTRE_INVERTED:
        return 1.0 - aroundCentre (value, 64);
    }
    return value / 127.0;
}

class Lamp : Row
{
    int light;
    int shape = ON_OR_OFF, off = 0, on = 127, blink = BY_TURNS, part = 0, parts = 0;
    double lowest = 0.0, highest = 1.0;
    int last = -1;
    double reading = 0.0; // of the last time, as the next
    bool blinks = false;

    Lamp (int s, int d, int p, int l, int n)
    {
        super (s, d, p, n);
        light = l;
    }

    Lamp@ everyDeck (int distance)
    {
        apart = distance;
        return this;
    }

    // The values for dark, lit and blinking.
    Lamp@ values (int dark, int lit, int blinking)
    {
        off = dark;
        on = lit;
        blink = blinking;
        return this;
    }

    // A second lamp for the same, which blinks by itself.
    Lamp@ blinksAlone (int dark, int lit)
    {
        shape = ALONE;
        return values (dark, lit, BY_TURNS);
    }

    Lamp@ scale (int from, int to)
    {
        shape = SCALE;
        return values (from, to, BY_TURNS);
    }

    // On from a share of the reading on.
    Lamp@ segment (int which, int count, int lit)
    {
        shape = SEGMENT;
        part = which;
        parts = count;
        return values (0, lit, BY_TURNS);
    }

    // The one of a row of lights at which the reading stands.
    Lamp@ pointer (int which, int count, int lit)
    {
        segment (which, count, lit);
        shape = POINTER;
        return this;
    }

    // Names the readings of the command at its ends.
    Lamp@ range (double low, double high)
    {
        lowest = low;
        highest = high;
        return this;
    }

    void look (int deck)
    {
        blinks = false;
        reading = isLit (deck) ? 1.0 : 0.0;
        if (light == READING)
            reading = (get (commandOf (deck)) - lowest) / (highest - lowest);
    }

    bool isLit (int deck)
    {
        switch (light)
        {
        case FULL:
            return get (commandOf (deck)) > 0.5f;
        case HELD:
            return heldOf[4 * number + deck] != 0;
        case PLAYING:
            blinks = get (CUE_A + deck) > 0.0f;
            return get (PLAY_PAUSE_A + deck) > 0.0f;
        case SYNCED:
            return get (SYNC_LOCK_A + deck) > 0.0f;
        case LOOPING:
            return isLooping (deck);
        case LOOPING_BEATS:
            return isLooping (deck) && int (get (LOOP_SIZE_A + deck)) == number;
        case AT_CENTRE:
        {
            double away = get (PITCH_A + deck) - 0.5;
            return away < 0.5 / 127.0 && away > -0.5 / 127.0;
        }
        case IN_TIMECODE:
            return get (DVS_INTERNAL_MODE_A + deck) == 0.0f;
        case IN_TIMECODE_MODE:
            return get (DVS_ABSOLUTE_MODE_A + deck) > 0.0f;
        case SHIFTED:
            return isShifted (deck);
        case IN_SCRATCH_MODE:
            return scratchModeOf[deck] != 0;
        case IN_SEARCH_MODE:
            return searchModeOf[deck] != 0;
        case IN_PAD_LAYER:
            return layerOf[deck] == number;
        case IN_PAD_LAYER_FLIP:
            return layerOf[deck] != 0;
        case IN_LAYER:
            return layerOf[WHOLE] == number;
        case IN_LAYER_FLIP:
            return layerOf[WHOLE] != 0;
        case ON_DECK:
            return deckAt (place) == number;
        case ON_NEXT_DECK:
            return place == SIDE_CHOSEN ? deckAt (place) != 0 : deckAt (place) >= 2;
        }
        return false;
    }

    int value()
    {
        double share = limited (reading, 0.0, 1.0);
        switch (shape)
        {
        case ALONE:
            return blinks ? on : off;
        case SCALE:
            return int (off + share * (on - off) + 0.5);
        case SEGMENT:
            return share * parts >= part - 0.5 ? on : off;
        case POINTER:
            return int (share * (parts - 1) + 0.5) == part - 1 ? on : off;
        }
        if (!blinks)
            return reading > 0.0 ? on : off;
        if (blink != BY_TURNS)
            return blink;
        return (ticks >> 3 & 1) != 0 ? on : off;
    }
}

// Both loops of beats; a loop of two marks can't be read.
bool isLooping (int deck)
{
    return get (LOOP_A + deck) > 0.0f || get (LEAP_A + deck) > 0.0f;
}

array<Control@> controls;
array<Lamp@> lamps;

Control@ control (int status, int data, int place, int form, int act, int number = 0)
{
    rowGroup++;
    Control row (status, data, place, form, act, number);
    controls.insertLast (row);
    return row;
}

Lamp@ lamp (int status, int data, int place, int light, int number = 0)
{
    Lamp row (status, data, place, light, number);
    lamps.insertLast (row);
    return row;
}

// Wheels

double jogBend = 0.005, jogScratch = 0.1, jogUnit = 1.0;
int jogLaw = BY_STEPS;
bool jogFeelsHand = true, jogTouchNeedsMode = false;

// The constants of the wheels: what a turn of 1 adds to the tempo and to the speed, the measure of a turn, the device's steps that
// count as one, whether the wheel feels the hand, and whether the hand scratches in scratch mode only.
void jog (double bend, double scratch, int law, double unit, bool feelsHand, bool touchNeedsMode)
{
    jogBend = bend;
    jogScratch = scratch;
    jogLaw = law;
    jogUnit = unit;
    jogFeelsHand = feelsHand;
    jogTouchNeedsMode = touchNeedsMode;
}

double powerOf2 (double x)
{
    // By the square of its half: the series ends soon for what is left.
    if (x > 0.5 || x < -0.5)
    {
        double half = powerOf2 (0.5 * x);
        return half * half;
    }
    double sum = 1.0, term = 1.0;
    for (int i = 1; i < 12; i++)
    {
        term *= x * 0.69314718055994531 / i;
        sum += term;
    }
    return sum;
}

void turnWheel (int act, int deck, double steps)
{
    double units = steps / jogUnit;
    if (act == JOG_SEARCH || (act == JOG && searchModeOf[deck] != 0))
    {
        set (SEEK_A + deck, float (limited (get (SEEK_A + deck) + units * SEARCH_STEP, 0.0, 1.0)));
        return;
    }
    double turn = jogLaw == BY_STEPS ? units : units / 127.0;
    double bend = (jogLaw == BY_POWER ? powerOf2 (turn) - 1.0 : turn) * jogBend;
    bool bends = act == JOG_BEND || jogFeelsHand || (get (PLAY_PAUSE_A + deck) > 0.0f && scratchModeOf[deck] == 0);
    if (act != JOG_SCRATCH && bends)
        set (JOG_A + deck, 1.0f, float (-bend), float (turn * jogScratch));
    else
        spin (deck, turn * jogScratch);
}

// Scratches with a wheel that does not feel the hand. OnTimerCallback lets it go.
void spin (int deck, double speed)
{
    spunAt[deck] = ticks;
    if (get (JOG_SCRATCH_ON_A + deck) > 0.0f)
    {
        set (JOG_A + deck, 1.0f, 0.0f, float (speed));
        return;
    }
    set (JOG_SCRATCH_ON_A + deck, 1.0f);
    isSpinning[deck] = true;
}

void letWheelsGo()
{
    for (int deck = 0; deck < 4; deck++)
        if (isSpinning[deck] && ticks - spunAt[deck] > 1)
        {
            isSpinning[deck] = false;
            set (JOG_SCRATCH_ON_A + deck, 0.0f);
        }
}

// Acts

void hear (int status, int data, int value)
{
    int acted = -1;
    for (uint i = 0; i < controls.length(); i++)
    {
        Control@ row = controls[i];
        if (row.status != status || !row.hears (data))
            continue;
        if (acted >= 0 && row.group != acted)
            return;
        int deck = deckAt (row.place);
        if (!row.isHere (deck))
            continue;
        acted = row.group;
        if (row.takes (data, value))
            carryOut (row, deck);
    }
}

void carryOut (Control@ row, int deck)
{
    int command = row.commandOf (deck);
    if (!row.isRelative && row.button >= 0)
        heldOf[4 * row.button + deck] = row.isPressed ? 1 : 0;
    switch (row.act)
    {
    case TRIGGER:
        if (row.isPressed)
            set (command, 1.0f);
        return;
    case HOLD:
        set (command, row.isPressed ? 1.0f : 0.0f);
        return;
    case VALUE:
        moveValue (command, row);
        return;
    case PITCH:
        movePitch (command, deck, row);
        return;
    case STEP:
        step (command, row.steps);
        return;
    case ROLL_BEATS:
        if (row.isPressed)
            sizeLoop (deck, row.number);
        if (row.isPressed != (get (LEAP_A + deck) > 0.0f))
            set (LEAP_A + deck);
        return;
    case JOG:
    case JOG_BEND:
    case JOG_SCRATCH:
    case JOG_SEARCH:
        turnWheel (row.act, deck, row.steps);
        return;
    case TOUCH:
        if (!row.isPressed || !jogTouchNeedsMode || scratchModeOf[deck] != 0)
            set (command, row.isPressed ? 1.0f : 0.0f);
        return;
    case SHIFT:
        shiftOf[row.place < SIDE_LEFT ? deck : WHOLE] = row.isPressed ? 1 : 0;
        return;
    }
    if (row.isRelative ? row.steps > 0.0 : row.isPressed)
    {
        change (row, deck, command);
        tellLayer();
    }
}

void setLimited (int command, double value)
{
    set (command, float (limited (value, 0.0, 1.0)));
}

void moveValue (int command, Control@ row)
{
    double place = row.position;
    if (row.isRelative)
        place = get (command) + limited (row.steps, -MOST_KNOB_STEPS, MOST_KNOB_STEPS) * KNOB_STEP;
    setLimited (command, place);
}

// A slider moves nothing until it stands at the pitch, and is followed while it moves. The command is written from the top of the
// slider down, and reads from the bottom up.
void movePitch (int command, int deck, Control@ row)
{
    if (get (SYNC_LOCK_A + deck) > 0.0f || get (DVS_INTERNAL_MODE_A + deck) == 0.0f)
        return;
    double reading = get (command);
    if (row.isRelative)
    {
        setLimited (command, 1.0 - reading - row.steps * PITCH_STEP);
        return;
    }
    double target = 1.0 - row.position, away = target - reading;
    bool hasCrossed = row.isCoarse && slidTo[deck] >= 0.0 && (slidTo[deck] - reading) * away < 0.0;
    slidTo[deck] = target;
    if ((away >= 0.01 || away <= -0.01) && ticks - movedAt[deck] > 1 && !hasCrossed)
        return;
    movedAt[deck] = ticks;
    setLimited (command, row.position);
}

void step (int command, double steps)
{
    for (double done = 0.0; done + 1.0 <= (steps < 0.0 ? -steps : steps) && done < MOST_LIST_STEPS; done += 1.0)
        set (command, steps > 0.0 ? 127.0f : 0.0f);
}

void sizeLoop (int deck, int size)
{
    step (LOOP_SIZE_A + deck, size - int (get (LOOP_SIZE_A + deck)));
}

void change (Control@ row, int deck, int command)
{
    switch (row.act)
    {
    case CENTRE:
        set (command, 0.5f);
        break;
    case FULL_OR_NONE:
        set (command, get (command) > 0.5f ? 0.0f : 1.0f);
        break;
    case NEXT_OF_TEN:
        set (command, float ((int (get (command) * 9.0f + 0.5f) + 1) % 10 / 9.0));
        break;
    case SEMITONE_DOWN:
        setLimited (command, get (command) - SEMITONE);
        break;
    case SEMITONE_UP:
        setLimited (command, get (command) + SEMITONE);
        break;
    case STORE_CUE: // a slot that is full would be jumped to
        if (get (command) > 0.0f)
            set (DELETE_HOT_CUE_1_A + command - HOT_CUE_1_A);
        set (command);
        break;
    case STOP:
        if (get (PLAY_PAUSE_A + deck) > 0.0f)
            set (PLAY_PAUSE_A + deck);
        break;
    case LOOP_BEATS:
    {
        bool isOn = get (LOOP_A + deck) > 0.0f, isThisOne = isOn && int (get (LOOP_SIZE_A + deck)) == row.number;
        sizeLoop (deck, row.number);
        if (!isOn || isThisOne)
            set (LOOP_A + deck);
        break;
    }
    case TIMECODE:
        set ((get (DVS_INTERNAL_MODE_A + deck) > 0.0f ? DVS_RELATIVE_MODE_A : DVS_INTERNAL_MODE_A) + deck);
        break;
    case TIMECODE_MODE:
        set ((get (DVS_ABSOLUTE_MODE_A + deck) > 0.0f ? DVS_RELATIVE_MODE_A : DVS_ABSOLUTE_MODE_A) + deck);
        break;
    case SCRATCH_MODE:
        scratchModeOf[deck] = 1 - scratchModeOf[deck];
        break;
    case SEARCH_MODE:
        searchModeOf[deck] = 1 - searchModeOf[deck];
        break;
    case PAD_LAYER:
        layerOf[deck] = row.number;
        break;
    case PAD_LAYER_FLIP:
        layerOf[deck] = layerOf[deck] == 0 ? 1 : 0;
        break;
    case LAYER:
        layerOf[WHOLE] = row.number;
        break;
    case LAYER_FLIP:
        layerOf[WHOLE] = layerOf[WHOLE] == 0 ? 1 : 0;
        break;
    case SELECT_DECK:
        if (row.place >= SIDE_LEFT)
            deckOfSide[row.place - SIDE_LEFT] = row.number;
        break;
    case NEXT_DECK:
        if (row.place == SIDE_CHOSEN)
            deckOfSide[2] = 1 - (deck & 1);
        else if (row.place >= SIDE_LEFT)
            deckOfSide[row.place - SIDE_LEFT] = (deck + 2) % 4;
        break;
    }
}

// Messages that tell a device the layer of the surface, in the order of the layers.

array<string> layerMessages;

void layerMessage (const string &in bytes)
{
    layerMessages.insertLast (bytes);
}

void tellLayer()
{
    if (layerMessages.length() > 0)
        sendSysExMessage (layerMessages[uint (limited (layerOf[WHOLE], 0.0, layerMessages.length() - 1.0))]);
}

// Displays

class Text : Row
{
    string head, words, last;
    bool isEffect = false;

    Text (const string &in h, const string &in w)
    {
        super (0, 0, SIDE_CHOSEN, 0);
        head = h;
        words = w;
    }

    void show()
    {
        int deck = deckAt (SIDE_CHOSEN);
        string now = isEffect ? " FX: " + (int (get (EFFECT_SELECT_1_GROUP_A + 9 * deck) * 9.0f + 0.5f) + 1) : words;
        if (!isHere (deck))
            now = ""; // another layer writes there
        if (now != last && now != "")
            sendSysExMessage (head + hex (now) + "F7");
        last = now;
    }
}

array<Text@> texts;

Text@ text (const string &in head, const string &in words)
{
    Text row (head, words);
    texts.insertLast (row);
    return row;
}

void effectText (const string &in head)
{
    text (head, "").isEffect = true;
}

string hex (const string &in words)
{
    const string digits = "0123456789ABCDEF";
    string bytes;
    for (uint i = 0; i < words.length(); i++)
        bytes += digits.substr (words[i] >> 4, 1) + digits.substr (words[i] & 15, 1);
    return bytes;
}

// Lamps

int mostChanges = 0; // of lamps in 50 ms, for devices that lose what comes faster; 0 is any number
uint nextLamp = 0;

void show()
{
    int changes = 0;
    for (uint done = 0; done < lamps.length(); done++)
    {
        if (mostChanges > 0 && changes >= mostChanges)
            break;
        Lamp@ row = lamps[nextLamp];
        nextLamp = (nextLamp + 1) % lamps.length();
        int deck = deckAt (row.place);
        if (!row.isHere (deck))
            continue;
        row.look (deck);
        int value = row.value();
        if (value != row.last)
            changes++;
        row.last = value;
        sendMidiMessage (row.status, row.data, value);
    }
    for (uint i = 0; i < texts.length(); i++)
        texts[i].show();
    letWheelsGo();
    ticks++;
}

// A record under a hand that leaves with the script would stand still for ever.
void letAllGo()
{
    for (int deck = 0; deck < 4; deck++)
        if (get (JOG_SCRATCH_ON_A + deck) > 0.0f)
            set (JOG_SCRATCH_ON_A + deck, 0.0f);
}
