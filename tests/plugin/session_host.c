/* A plain host with two instances of the plug-in, which share one library and one session with the user.
   Usage: session_host PLUGIN. Needs a display, and somebody who answers the question: it says "ASKED" when Play was pressed
   during automix. Prints one line a fact; ends with 1 at the first failure. */

#include <pluginterfaces/vst2.x/aeffectx.h>

#include <dirent.h>
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

typedef AEffect* (*Entry) (audioMasterCallback);

enum
{
    channels = 14,
    block = 512,
    blocksInAMinute = 5600, /* at 48 kHz */
    playA = 1,              /* parameters are the numbers of commands */
    seekA = 209,
    automix = 435
};

static t_fstPtrInt host (AEffect* effect, int opcode, int index, t_fstPtrInt value, void* const data,
                         float option)
{
    (void)effect, (void)index, (void)value, (void)data, (void)option;
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

static void tell (AEffect* effect, int opcode, t_fstPtrInt value, float option)
{
    effect->dispatcher (effect, opcode, 0, value, NULL, option);
}

static void fail (const char* what)
{
    printf ("FAILED: %s\n", what);
    exit (1);
}

static void say (const char* what)
{
    printf ("%s\n", what);
    fflush (stdout);
}

/* Plays one block of each instance at the clock's pace. */
static void play (AEffect** effects, int count)
{
    static float memory[channels][block];
    float* pointers[channels];
    const struct timespec pause = { 0, 1000000000L / 48000 * block };
    for (int i = 0; i < channels; ++i)
        pointers[i] = memory[i];
    for (int i = 0; i < count; ++i)
        effects[i]->processReplacing (effects[i], pointers, pointers, block);
    nanosleep (&pause, NULL);
}

static int isOn (AEffect* effect, int parameter)
{
    return effect->getParameter (effect, parameter) > 0.5f;
}

/* How often this process has a file of that name open. */
static int openFiles (const char* name)
{
    int found = 0;
    DIR* folder = opendir ("/proc/self/fd");
    for (struct dirent* entry; (entry = readdir (folder)) != NULL;)
    {
        char target[4096];
        const ssize_t length = readlinkat (dirfd (folder), entry->d_name, target, sizeof (target) - 1);
        if (length <= 0)
            continue;
        target[length] = 0;
        const char* last = strrchr (target, '/');
        if (last != NULL && strcmp (last + 1, name) == 0)
            ++found;
    }
    closedir (folder);
    return found;
}

static void expectOpen (const char* name, int times, const char* what)
{
    if (openFiles (name) != times)
    {
        printf ("FAILED: %s: %s is open %d times\n", what, name, openFiles (name));
        exit (1);
    }
}

static AEffect* makeInstance (Entry entry)
{
    AEffect* effect = entry (host);
    if (effect == NULL)
        fail ("the entry made no effect");
    tell (effect, effOpen, 0, 0.0f);
    tell (effect, effSetSampleRate, 0, 48000.0f);
    tell (effect, effSetBlockSize, block, 0.0f);
    tell (effect, effMainsChanged, 1, 0.0f);
    return effect;
}

int main (int argc, char** argv)
{
    static const char library[] = "px_music_library.sqlite";
    void* plugin = argc == 2 ? dlopen (argv[1], RTLD_NOW | RTLD_LOCAL) : NULL;
    if (plugin == NULL)
        fail ("usage: session_host PLUGIN");
    const Entry entry = (Entry)dlsym (plugin, "VSTPluginMain");
    if (entry == NULL)
        fail ("no VSTPluginMain");
    AEffect* effects[2];
    for (int i = 0; i < 2; ++i)
        effects[i] = makeInstance (entry);

    for (int i = 0; i < 2; ++i)
        effects[i]->setParameter (effects[i], automix, 1.0f);
    int left = blocksInAMinute;
    while (effects[0]->getParameter (effects[0], seekA) <= 0.0f
           || effects[1]->getParameter (effects[1], seekA) <= 0.0f)
    {
        if (--left == 0)
            fail ("automix plays no song of the library in both instances");
        play (effects, 2);
    }
    say ("both instances play songs of the library");
    const int connections = openFiles (library);
    if (connections < 1)
        fail ("no library is open");
    expectOpen ("session.lock", 1, "two instances share one root");

    effects[0]->setParameter (effects[0], playA, 1.0f);
    say ("ASKED");
    for (left = blocksInAMinute; isOn (effects[0], automix); play (effects, 2))
        if (--left == 0)
            fail ("no answer came");
    say ("the answer ended automix in the instance that asked");
    if (!isOn (effects[1], automix))
        fail ("the other instance lost its automix");

    tell (effects[0], effMainsChanged, 0, 0.0f);
    tell (effects[0], effClose, 0, 0.0f);
    const float before = effects[1]->getParameter (effects[1], seekA);
    for (int i = 0; i < 100; ++i)
        play (effects + 1, 1);
    if (effects[1]->getParameter (effects[1], seekA) <= before)
        fail ("the second instance stands still without the first");
    expectOpen (library, connections, "two instances have as many connections to the library as one");
    tell (effects[1], effMainsChanged, 0, 0.0f);
    tell (effects[1], effClose, 0, 0.0f);
    expectOpen (library, 0, "the last instance closes the library");
    expectOpen ("session.lock", 0, "the last instance lets the root go");
    say ("the last instance closed the session");
    return 0;
}
