#include "tracks/AdecSharedLibrary.h"

namespace
{
template <typename Function>
struct Stub;

template <typename Result, typename... Arguments>
struct Stub<Result (*) (Arguments...)>
{
    static Result call (Arguments...) { return Result(); }
};

template <typename Function>
void lookUp (juce::DynamicLibrary& library, const char* name, Function& function, bool& allFound)
{
    function = reinterpret_cast<Function> (library.getFunction (name));
    if (function != nullptr)
        return;
    function = &Stub<Function>::call;
    allFound = false;
}
}

AdecSharedLibrary::AdecSharedLibrary (const juce::File& library)
{
    loaded = handle.open (library.getFullPathName());
    const auto lookUpAll = [this]
    {
        lookUp (handle, "adec_get_version", adec_get_version, loaded);
        lookUp (handle, "adec_get_ffmpeg_revision", adec_get_ffmpeg_revision, loaded);
        lookUp (handle, "adec_get_audio_buffer_size", adec_get_audio_buffer_size, loaded);
        lookUp (handle, "adec_init", adec_init, loaded);
        lookUp (handle, "adec_open_filename", adec_open_filename, loaded);
        lookUp (handle, "adec_close_file", adec_close_file, loaded);
        lookUp (handle, "adec_file_info", adec_file_info, loaded);
        lookUp (handle, "adec_stream_info", adec_stream_info, loaded);
        lookUp (handle, "adec_open_stream", adec_open_stream, loaded);
        lookUp (handle, "adec_close_stream", adec_close_stream, loaded);
        lookUp (handle, "adec_read", adec_read, loaded);
        lookUp (handle, "adec_decode_audio", adec_decode_audio, loaded);
        lookUp (handle, "av_malloc", av_malloc, loaded);
        lookUp (handle, "av_mallocz", av_mallocz, loaded);
        lookUp (handle, "av_free", av_free, loaded);
        lookUp (handle, "av_freep", av_freep, loaded);
        lookUp (handle, "av_fast_realloc", av_fast_realloc, loaded);
    };
    lookUpAll();
    if (!loaded)
    {
        // Half a library is none: with the handle closed every look-up ends in its stub.
        handle.close();
        lookUpAll();
    }
    adec_init();
}
