#pragma once

#include "adec/adec.h"

#include <juce_core/juce_core.h>

/** The decoder library, found at run time.

    Where it cannot be loaded, or lacks one of its functions, every pointer leads to a stub that returns 0 or nothing:
    no file opens then, and a load ends in its error. */
class AdecSharedLibrary
{
public:
    /** @param library   the file; a missing one is no error */
    explicit AdecSharedLibrary (const juce::File& library);
    AdecSharedLibrary (const AdecSharedLibrary&) = delete;
    AdecSharedLibrary& operator= (const AdecSharedLibrary&) = delete;

    /** True if the library was found whole. */
    bool isLoaded() const noexcept { return loaded; }

    AdecGetVersion adec_get_version;
    AdecGetFfmpegRevision adec_get_ffmpeg_revision;
    AdecGetAudioBufferSize adec_get_audio_buffer_size;
    AdecInit adec_init;
    AdecOpenFilename adec_open_filename;
    AdecCloseFile adec_close_file;
    AdecFileInfo adec_file_info;
    AdecStreamInfo adec_stream_info;
    AdecOpenStream adec_open_stream;
    AdecCloseStream adec_close_stream;
    AdecRead adec_read;
    AdecDecodeAudio adec_decode_audio;
    AvMalloc av_malloc;
    AvMallocz av_mallocz;
    AvFree av_free;
    AvFreep av_freep;
    AvFastRealloc av_fast_realloc;

private:
    juce::DynamicLibrary handle;
    bool loaded = false;
};
