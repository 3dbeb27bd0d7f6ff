#include "session/SongPreview.h"

namespace
{
constexpr Worker::Key newest = 0;
}

SongPreview::SongPreview (FileStreamPlayer& p) : player (p) {}

SongPreview::~SongPreview()
{
    player.stop();
}

void SongPreview::play (const juce::String& path, double fromSeconds)
{
    asked = path;
    failed = false;
    player.stop();
    worker.post (newest, { [this, path, fromSeconds] (const std::stop_token& stop)
                           {
                               const auto isOpen = player.track().path == path || player.load (path);
                               failed = !isOpen;
                               if (!isOpen || stop.stop_requested())
                                   return;
                               player.seek (fromSeconds);
                               player.play();
                           },
                           [this] (const char*) { failed = true; } });
}

void SongPreview::toggle (const juce::String& path)
{
    if (path == asked && (isPlaying() || isOpening()))
        stop();
    else
        play (path);
}

void SongPreview::playOrPause()
{
    if (isPlaying() || asked.isEmpty())
        return stop();
    worker.post (newest, { [this, path = asked] (const std::stop_token&)
                           {
                               failed = player.track().path != path && !player.load (path);
                               if (!failed)
                                   player.play();
                           } });
}

void SongPreview::stop()
{
    worker.cancel();
    player.stop();
}

void SongPreview::seek (double seconds)
{
    worker.post ({ [this, seconds] (const std::stop_token&) { player.seek (seconds); } });
}

void SongPreview::setLevel (float gain)
{
    player.setLevel (gain);
}

float SongPreview::level() const
{
    return player.level();
}

bool SongPreview::isPlaying() const
{
    return player.isPlaying();
}

double SongPreview::position() const
{
    return player.position();
}

double SongPreview::length() const
{
    return player.track().seconds;
}
