/* A plain host that opens the plug-in's window in one of its own, waits until something is seen in it, and closes both.
   Usage: editor_host PLUGIN [TIMES]. Needs a display. Prints one line a fact; ends with 1 at the first failure. */

#include <pluginterfaces/vst2.x/aeffectx.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

typedef AEffect* (*Entry) (audioMasterCallback);

/* As an editor answers effEditGetRect. */
struct Rect
{
    short top, left, bottom, right;
};

enum
{
    longestTurns = 6000, /* a minute for one window */
    turnMs = 10,
    leastColours = 16 /* of a picture; a window without one has a single colour */
};

static t_fstPtrInt host (AEffect* effect, int opcode, int index, t_fstPtrInt value, void* const data,
                         float option)
{
    (void)effect, (void)index, (void)value, (void)data, (void)option;
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

static t_fstPtrInt tell (AEffect* effect, int opcode, t_fstPtrInt value, void* data)
{
    return effect->dispatcher (effect, opcode, 0, value, data, 0.0f);
}

static void fail (const char* what)
{
    printf ("FAILED: %s\n", what);
    exit (1);
}

/* How many colours a window shows in a grid of its points, up to leastColours. */
static int coloursIn (Display* display, Window window, int width, int height)
{
    unsigned long seen[leastColours];
    int count = 0;
    XImage* image = XGetImage (display, window, 0, 0, (unsigned)width, (unsigned)height, AllPlanes, ZPixmap);
    if (image == NULL)
        return 0;
    for (int y = 0; y < height; y += 3)
        for (int x = 0; x < width && count < leastColours; x += 3)
        {
            const unsigned long pixel = XGetPixel (image, x, y);
            int i = 0;
            while (i < count && seen[i] != pixel)
                ++i;
            if (i == count)
                seen[count++] = pixel;
        }
    XDestroyImage (image);
    return count;
}

static void openAndClose (AEffect* effect, Display* display)
{
    struct Rect* size = NULL;
    tell (effect, effEditGetRect, 0, &size);
    if (size == NULL || size->right <= size->left || size->bottom <= size->top)
        fail ("the editor has no size");
    const int width = size->right - size->left, height = size->bottom - size->top;

    const Window window = XCreateSimpleWindow (display, DefaultRootWindow (display), 0, 0, (unsigned)width,
                                               (unsigned)height, 0, 0, 0);
    XMapWindow (display, window);
    XSync (display, False);
    if (tell (effect, effEditOpen, 0, (void*)window) == 0)
        fail ("the editor does not open");

    const struct timespec turn = { 0, turnMs * 1000000L };
    int turns = 0;
    while (coloursIn (display, window, width, height) < leastColours)
    {
        if (++turns > longestTurns)
            fail ("nothing is seen in the editor");
        tell (effect, effEditIdle, 0, NULL);
        nanosleep (&turn, NULL);
    }
    tell (effect, effEditClose, 0, NULL);
    XDestroyWindow (display, window);
    XSync (display, False);
}

/* A window that is still on its way to its place can't be read. */
static int ignoreError (Display* display, XErrorEvent* event)
{
    (void)display, (void)event;
    return 0;
}

int main (int argc, char** argv)
{
    if (argc < 2)
        fail ("usage: editor_host PLUGIN [TIMES]");
    XInitThreads();
    Display* display = XOpenDisplay (NULL);
    if (display == NULL)
        fail ("there is no display");
    XSetErrorHandler (ignoreError);
    void* library = dlopen (argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == NULL)
        fail (dlerror());
    const Entry entry = (Entry)dlsym (library, "VSTPluginMain");
    if (entry == NULL)
        fail ("no VSTPluginMain");
    AEffect* effect = entry (host);
    if (effect == NULL)
        fail ("the entry made no effect");
    tell (effect, effOpen, 0, NULL);

    const int times = argc > 2 ? atoi (argv[2]) : 5;
    for (int i = 0; i < times; ++i)
        openAndClose (effect, display);
    printf ("the editor was opened, seen and closed %d times\n", times);
    tell (effect, effClose, 0, NULL);
    XCloseDisplay (display);
    return 0;
}
