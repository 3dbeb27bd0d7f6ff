#include "ui/browser/files/BasicFileBrowser.h"

#include "support/files/AudioFileTypes.h"

BasicFileBrowser::BasicFileBrowser() : audioFiles (AudioFileTypes::wildcard, "*", {})
{
    reader.startThread();
}

BasicFileBrowser::~BasicFileBrowser()
{
    reader.stopThread (10000);
}
