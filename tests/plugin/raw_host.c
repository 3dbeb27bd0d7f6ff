/* A host of the plainest kind: it loads the plug-in, looks only at the VST 2 record and says what it sees.
   Usage: raw_host [--names] PLUGIN. Prints one line a fact and one line a failure; ends with 1 if there was a failure.
   With --names it prints the names of the parameters, one a line, and looks at nothing else. */

#define _POSIX_C_SOURCE 200809L
#include <pluginterfaces/vst2.x/aeffectx.h>

#include <dlfcn.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#define INPUTS 10
#define OUTPUTS 14
#define PARAMETERS 465
#define TEXT_BYTES 64
#define PARAMETER_TEXT_BYTES 32 /* the room that old hosts have */
#define NO_SOUND_IN_STOP (1 << 9)
#define GET_TAIL_SIZE 52
#define BLOCK 512

/* "Key Tuning A": it holds any value from 0 to 1, and these checks only write eighths, which come back exactly. */
static const int keyTuning = 37;

typedef AEffect* (*Entry) (audioMasterCallback);

static int failures = 0;
static int changesReported = 0;

#define CHECK(condition, ...)                                                                                \
    do                                                                                                       \
    {                                                                                                        \
        if (!(condition))                                                                                    \
        {                                                                                                    \
            printf ("FAILED line %d: %s: ", __LINE__, #condition);                                           \
            printf (__VA_ARGS__);                                                                            \
            printf ("\n");                                                                                   \
            ++failures;                                                                                      \
        }                                                                                                    \
    } while (0)

static t_fstPtrInt host (AEffect* effect, int opcode, int index, t_fstPtrInt value, void* const data,
                         float option)
{
    static t_fstTimeInfo time;
    (void)effect;
    (void)value;
    (void)data;
    (void)option;
    switch (opcode)
    {
    case audioMasterAutomate:
        ++changesReported;
        CHECK (index >= 0 && index < PARAMETERS, "the plug-in reported parameter %d", index);
        return 0;
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterGetSampleRate:
        return 48000;
    case audioMasterGetBlockSize:
        return BLOCK;
    case audioMasterGetTime:
        time.sampleRate = 48000.0;
        time.tempo = 125.0;
        time.timeSigNumerator = time.timeSigDenominator = 4;
        time.flags = kVstTempoValid | kVstTimeSigValid | kVstPpqPosValid;
        return (t_fstPtrInt)&time;
    default:
        return 0;
    }
}

static t_fstPtrInt tell (AEffect* effect, int opcode, int index, t_fstPtrInt value, void* data, float option)
{
    return effect->dispatcher (effect, opcode, index, value, data, option);
}

/* The answer of a text opcode; the memory behind the 64 bytes that hosts give is watched. */
static const char* text (AEffect* effect, int opcode, int index)
{
    static char memory[TEXT_BYTES + 64];
    memset (memory, 0x5a, sizeof (memory));
    memory[0] = 0;
    tell (effect, opcode, index, 0, memory, 0.0f);
    for (size_t i = TEXT_BYTES; i < sizeof (memory); ++i)
        CHECK (memory[i] == 0x5a, "opcode %d wrote behind its 64 bytes", opcode);
    CHECK (memchr (memory, 0, TEXT_BYTES) != NULL, "opcode %d gave a text without an end", opcode);
    memory[TEXT_BYTES] = 0;
    return memory;
}

static void expectText (AEffect* effect, int opcode, int index, const char* expected)
{
    const char* found = text (effect, opcode, index);
    CHECK (strcmp (found, expected) == 0, "opcode %d, index %d says \"%s\" and not \"%s\"", opcode, index,
           found, expected);
}

static void start (AEffect* effect)
{
    tell (effect, effOpen, 0, 0, NULL, 0.0f);
    tell (effect, effSetSampleRate, 0, 0, NULL, 48000.0f);
    tell (effect, effSetBlockSize, 0, BLOCK, NULL, 0.0f);
    tell (effect, effMainsChanged, 0, 1, NULL, 0.0f);
}

static void stop (AEffect* effect)
{
    tell (effect, effMainsChanged, 0, 0, NULL, 0.0f);
    tell (effect, effClose, 0, 0, NULL, 0.0f);
}

/* One block of a given length; the inputs carry a tone.
   @returns the largest absolute output, infinity if an output is not a number */
static double process (AEffect* effect, int frames)
{
    float* in[INPUTS];
    float* out[OUTPUTS];
    double largest = 0.0;
    for (int c = 0; c < INPUTS; ++c)
    {
        in[c] = malloc (sizeof (float) * (size_t)(frames + 1));
        for (int i = 0; i < frames; ++i)
            in[c][i] = 0.5f * sinf ((float)i * 0.05f);
    }
    for (int c = 0; c < OUTPUTS; ++c)
    {
        out[c] = malloc (sizeof (float) * (size_t)(frames + 1));
        for (int i = 0; i <= frames; ++i)
            out[c][i] = 7.0f;
    }
    effect->processReplacing (effect, in, out, frames);
    for (int c = 0; c < OUTPUTS; ++c)
    {
        CHECK (out[c][frames] == 7.0f, "output %d was written behind its %d frames", c, frames);
        for (int i = 0; i < frames; ++i)
            largest = isfinite (out[c][i]) ? fmax (largest, fabs (out[c][i])) : INFINITY;
        free (out[c]);
    }
    for (int c = 0; c < INPUTS; ++c)
        free (in[c]);
    return largest;
}

static void checkIdentity (AEffect* effect)
{
    CHECK (effect->magic == kEffectMagic, "magic %x", (unsigned)effect->magic);
    CHECK (effect->numInputs == INPUTS, "%d inputs", effect->numInputs);
    CHECK (effect->numOutputs == OUTPUTS, "%d outputs", effect->numOutputs);
    CHECK (effect->numParams == PARAMETERS, "%d parameters", effect->numParams);
    CHECK (effect->numPrograms == 1, "%d programs", effect->numPrograms);
    CHECK ((effect->flags & effFlagsCanReplacing) != 0, "flags %lx", (long)effect->flags);
    CHECK ((effect->flags & effFlagsHasEditor) != 0, "flags %lx", (long)effect->flags);
    CHECK ((effect->flags & effFlagsIsSynth) == 0, "flags %lx", (long)effect->flags);
    CHECK ((effect->flags & NO_SOUND_IN_STOP) == 0, "flags %lx: silent without input", (long)effect->flags);
    CHECK (tell (effect, GET_TAIL_SIZE, 0, 0, NULL, 0.0f) == 2147483647, "its tail has an end");
    expectText (effect, effGetEffectName, 0, "Platterdex");
    expectText (effect, effGetVendorString, 0, "Tonal-Yard");
    expectText (effect, effGetProductString, 0, "Platterdex2");
    expectText (effect, effGetProgramName, 0, "");
    CHECK (tell (effect, effGetProgram, 0, 0, NULL, 0.0f) == 0, "another program than the first");
    CHECK (tell (effect, effGetVstVersion, 0, 0, NULL, 0.0f) == 2400, "another version of the format");
    CHECK (tell (effect, effCanDo, 0, 0, (void*)"receiveVstMidiEvent", 0.0f) <= 0,
           "it takes MIDI of the host");
    CHECK (tell (effect, effCanDo, 0, 0, (void*)"sendVstMidiEvent", 0.0f) <= 0, "it sends MIDI to the host");
    printf ("channels %d %d, parameters %d, programs %d\n", effect->numInputs, effect->numOutputs,
            effect->numParams, effect->numPrograms);
}

static void checkPins (AEffect* effect, int opcode, const char* const* buses, int channels)
{
    for (int i = 0; i < channels + 1; ++i)
    {
        struct
        {
            t_fstPinProperties pin;
            char watched[64];
        } memory;
        char expected[64];
        memset (&memory, 0x5a, sizeof (memory));
        const t_fstPtrInt known = tell (effect, opcode, i, 0, &memory.pin, 0.0f);
        CHECK (known == (i < channels), "pin %d of %d", i, channels);
        for (size_t b = 0; b < sizeof (memory.watched); ++b)
            CHECK (memory.watched[b] == 0x5a, "pin %d is longer than its record", i);
        if (i == channels)
            break;
        snprintf (expected, sizeof (expected), "%s %c", buses[i / 2], i % 2 == 0 ? 'L' : 'R');
        CHECK (strcmp (memory.pin.label, expected) == 0, "pin %d is \"%s\" and not \"%s\"", i,
               memory.pin.label, expected);
        CHECK ((memory.pin.flags & 1) != 0, "pin %d is not active", i);
        CHECK (((memory.pin.flags & 2) != 0) == (i % 2 == 0), "pin %d: a pair starts at every left channel",
               i);
    }
}

static void checkNames (AEffect* effect)
{
    static const struct
    {
        int index;
        const char* name;
    } names[] = {
        { 0, "" },
        { 1, "Play/Pause A" },
        { 29, "Pitch Bend Nudge (-4.00%) A" },
        { 41, "Key Lock A" },
        { 277, "Crossfader" },
        { 445, "VST Set Insert/Send Signal Ro A" },
        { 448, "VST Set Insert/Send Signal Ro D" },
        { 464, "Cue/Play D" },
        { 465, "Disk Recorder" },
        { -1, "" },
        { 466, "" },
        { 3180, "" },
    };
    for (size_t i = 0; i < sizeof (names) / sizeof (names[0]); ++i)
        expectText (effect, effGetParamName, names[i].index, names[i].name);
    for (int index = 1; index <= PARAMETERS; ++index)
    {
        const size_t length = strlen (text (effect, effGetParamName, index));
        CHECK (length > 0 && length < PARAMETER_TEXT_BYTES, "the name of parameter %d has %zu bytes", index,
               length);
        expectText (effect, effGetParamLabel, index, "");
        CHECK (strchr (text (effect, effGetParamDisplay, index), '.') != NULL, "parameter %d has no decimals",
               index);
        CHECK (tell (effect, effCanBeAutomated, index, 0, NULL, 0.0f) == 1, "parameter %d is not automatable",
               index);
    }
    tell (effect, effGetParamName, 1, 0, NULL, 0.0f);
}

/* A toggle reads what an odd number of writes leaves only if none of them is lost. */
static void checkTriggers (AEffect* effect, int index)
{
    const float before = effect->getParameter (effect, index);
    for (int i = 1; i <= 7; ++i)
    {
        effect->setParameter (effect, index, 1.0f);
        const float now = effect->getParameter (effect, index);
        CHECK (now == (i % 2 == 1 ? 1.0f - before : before), "write %d to %d reads %g", i, index,
               (double)now);
        effect->setParameter (effect, index, 0.0f);
        CHECK (effect->getParameter (effect, index) == now, "a release of %d acts", index);
    }
    effect->setParameter (effect, index, 1.0f);
    CHECK (effect->getParameter (effect, index) == before, "parameter %d did not come back", index);
}

static void checkValues (AEffect* effect)
{
    static const int outside[] = { -1, 0, 466, 1007, 100000, -2147483647 - 1, 2147483647 };
    char shown[TEXT_BYTES];

    effect->setParameter (effect, keyTuning, 0.25f);
    CHECK (effect->getParameter (effect, keyTuning) == 0.25f, "key tuning %g",
           (double)effect->getParameter (effect, keyTuning));
    expectText (effect, effGetParamDisplay, keyTuning, "0.25");
    CHECK (tell (effect, effString2Parameter, keyTuning, 0, (void*)" 0.75", 0.0f) == 1,
           "a number as text is refused");
    expectText (effect, effGetParamDisplay, keyTuning, "0.75");
    CHECK (tell (effect, effString2Parameter, keyTuning, 0, NULL, 0.0f) == 1, "texts are taken");
    CHECK (tell (effect, effString2Parameter, keyTuning, 0, (void*)"left", 0.0f) == 0, "a word is no value");
    CHECK (tell (effect, effString2Parameter, 0, 0, (void*)"1", 0.0f) == 0, "index 0 takes no text");
    effect->setParameter (effect, keyTuning, NAN);
    effect->setParameter (effect, keyTuning, INFINITY);
    expectText (effect, effGetParamDisplay, keyTuning, "0.75");
    CHECK (tell (effect, effVendorSpecific, effGetParamDisplay, keyTuning, shown, 0.125f) == 0xbeef,
           "no text for a value");
    CHECK (strlen (shown) == 4, "a value is shown as \"%s\"", shown);
    effect->setParameter (effect, keyTuning, 0.5f);

    for (size_t i = 0; i < sizeof (outside) / sizeof (outside[0]); ++i)
    {
        effect->setParameter (effect, outside[i], 1.0f);
        CHECK (effect->getParameter (effect, outside[i]) == 0.0f, "index %d has a value", outside[i]);
        text (effect, effGetParamName, outside[i]);
        text (effect, effGetParamDisplay, outside[i]);
    }

    /* Only the special call makes the system stand alone, and then the master deck shows. */
    CHECK (effect->getParameter (effect, 9) == 0.0f, "it stands alone from the start");
    effect->setParameter (effect, 3180, 1.0f);
    CHECK (effect->getParameter (effect, 9) == 0.0f, "any value of 3180 makes it stand alone");
    effect->setParameter (effect, 3180, 3180.0f);
    effect->setParameter (effect, 9, 1.0f);
    CHECK (effect->getParameter (effect, 9) == 1.0f, "the special call did not arrive");
}

/* The recorder's file is opened and closed on the plug-in's message thread, soon after the write. */
static int recorderBecomes (AEffect* effect, float expected)
{
    for (int tries = 0; tries < 1000; ++tries)
    {
        const struct timespec pause = { 0, 10000000 };
        if (effect->getParameter (effect, 465) == expected)
            return 1;
        nanosleep (&pause, NULL);
    }
    return 0;
}

static void checkRecorder (AEffect* effect)
{
    effect->setParameter (effect, 465, 1.0f);
    CHECK (recorderBecomes (effect, 1.0f), "parameter 465 did not arrive");
    process (effect, BLOCK);
    effect->setParameter (effect, 465, 1.0f);
    CHECK (recorderBecomes (effect, 0.0f), "the second write to 465 did not arrive");
}

static void checkState (AEffect* effect)
{
    char junk[] = "anything that was saved elsewhere";
    for (int program = 0; program < 2; ++program)
    {
        void* chunk = junk;
        CHECK (tell (effect, effGetChunk, program, 0, &chunk, 0.0f) == 0, "there is state to save");
        effect->setParameter (effect, keyTuning, 0.125f);
        tell (effect, effSetChunk, program, sizeof (junk), junk, 0.0f);
        CHECK (effect->getParameter (effect, keyTuning) == 0.125f, "restoring changed a value");
    }
    effect->setParameter (effect, keyTuning, 0.5f);
}

static void checkBlocks (AEffect* effect)
{
    static const int sizes[] = { 0, 1, 64, BLOCK, 16383, 16384, 20000, 0, 64 };
    for (size_t i = 0; i < sizeof (sizes) / sizeof (sizes[0]); ++i)
    {
        const double largest = process (effect, sizes[i]);
        CHECK (largest == 0.0, "without a track a block of %d frames reaches %g", sizes[i], largest);
    }
}

static AEffect* create (Entry entry)
{
    AEffect* effect = entry (host);
    if (effect == NULL)
    {
        printf ("FAILED: the entry made no effect\n");
        exit (1);
    }
    start (effect);
    return effect;
}

int main (int argc, char** argv)
{
    static const char* const inputs[] = { "Deck1", "Deck2", "Deck3", "Deck4", "Mic" };
    static const char* const outputs[] = {
        "Master", "Monitor", "Deck1", "Deck2", "Deck3", "Deck4", "Sampler"
    };

    const int onlyNames = argc == 3 && strcmp (argv[1], "--names") == 0;
    if (argc != 2 && !onlyNames)
    {
        printf ("usage: raw_host [--names] PLUGIN\n");
        return 1;
    }
    void* library = dlopen (argv[argc - 1], RTLD_NOW | RTLD_LOCAL);
    if (library == NULL)
    {
        printf ("FAILED: %s\n", dlerror());
        return 1;
    }
    const Entry entry = (Entry)dlsym (library, "VSTPluginMain");
    const Entry olderEntry = (Entry)dlsym (library, "main");
    CHECK (entry != NULL, "no VSTPluginMain");
    CHECK (olderEntry != NULL, "no main");
    CHECK (dlsym (library, "wrappedVstPluginMain") == NULL, "JUCE's entry shows");
    if (entry == NULL || olderEntry == NULL)
        return 1;

    AEffect* effect = create (entry);
    if (onlyNames)
    {
        for (int index = 1; index <= PARAMETERS; ++index)
            printf ("%s\n", text (effect, effGetParamName, index));
        stop (effect);
        return 0;
    }
    checkIdentity (effect);
    checkPins (effect, effGetInputProperties, inputs, INPUTS);
    checkPins (effect, effGetOutputProperties, outputs, OUTPUTS);
    checkNames (effect);
    checkBlocks (effect);
    checkTriggers (effect, 41);
    checkTriggers (effect, 44);
    checkValues (effect);
    checkRecorder (effect);
    checkState (effect);

    /* Two instances keep apart, and the death of one leaves the other whole. */
    AEffect* other = create (olderEntry);
    other->setParameter (other, keyTuning, 0.25f);
    CHECK (effect->getParameter (effect, keyTuning) == 0.5f, "two instances share a parameter");
    stop (effect);
    CHECK (other->getParameter (other, keyTuning) == 0.25f,
           "the second instance lost its value with the first");
    CHECK (process (other, BLOCK) == 0.0, "the second instance does not run");
    stop (other);

    int opened = 0;
    for (; opened < 20; ++opened)
    {
        AEffect* again = create (opened % 2 == 0 ? entry : olderEntry);
        process (again, 64);
        stop (again);
    }
    printf ("opened and closed %d times, %d changes reported\n", opened, changesReported);

#ifndef __SANITIZE_ADDRESS__ /* a report of leaks has names only as long as the plug-in is there */
    dlclose (library);
#endif
    printf (failures == 0 ? "all held\n" : "%d failures\n", failures);
    return failures == 0 ? 0 : 1;
}
