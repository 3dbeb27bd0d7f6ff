#include "ui/preferences/AboutPreferencesPage.h"

#include "support/language/Translate.h"

namespace
{
constexpr TextSection aboutTexts[] {
    { "Platterdex " PX_VERSION,
      N_ ("Four decks, a mixer, effects, pads, a sampler, control records, controllers and a record box: as "
          "an "
          "application, as a plug-in, and as a program that renders sets without a window.") },
    { N_ ("Licence"), N_ ("Platterdex is free software: you may use it, change it and pass it on under the "
                          "GNU General Public License, version 3 or later.") },
    { N_ ("Libraries"),
      N_ ("JUCE 7 (GPL 3): windows, plug-ins, audio devices\n"
          "FFmpeg (LGPL 2.1 or GPL 2): formats of tracks\n"
          "FLAC, Vorbis and Ogg (BSD): lossless and free formats\n"
          "FFTW 3 (GPL 2): Fourier transforms\n"
          "SQLite (public domain): the library's file\n"
          "TagLib (LGPL 2.1): tags and covers\n"
          "libarchive (BSD): backups\n"
          "AngelScript (zlib): scripts of controllers\n"
          "FreeType (FreeType licence), libpng (libpng licence), libjpeg-turbo (BSD) and zlib (zlib "
          "licence): text and pictures\n"
          "JACK (LGPL 2.1) and ALSA (LGPL 2.1): sound and MIDI\n"
          "FST's plug-in header (GPL 3) and LV2 (ISC): formats of plug-ins\n"
          "VST3 (GPL 3), lilv, serd, sord and sratom (ISC), as JUCE brings them: plug-ins of others\n"
          "D-Bus (GPL 2 or AFL 2.1): real time for the audio thread\n"
          "X11 (MIT): the screen") },
    { N_ ("Fonts"), N_ ("DejaVu (free licence after Bitstream Vera) and Roboto (Apache 2.0)") },
    { N_ ("Warranty"), N_ ("The program comes without any warranty, as far as the law allows.") },
};
}

AboutPreferencesPage::AboutPreferencesPage() : TextPage (aboutTexts) {}
