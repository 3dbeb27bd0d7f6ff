#pragma once

/** Marks a function that the audio thread may run: it never allocates, never waits, never touches a file, and calls
    only functions marked likewise. Compilers that can check this are told to. */
#if defined(__clang__) && defined(__has_cpp_attribute)
    #if __has_cpp_attribute(clang::nonblocking)
        #define PX_AUDIO_THREAD __attribute__ ((nonblocking))
    #endif
#endif
#ifndef PX_AUDIO_THREAD
    #define PX_AUDIO_THREAD
#endif

/** Lives on the stack while the calling thread processes an audio block. In a program that is linked with the real-time
    sanitizer's run time, whatever allocates, waits or calls the system meanwhile ends the program with a report. */
class AudioThreadScope
{
public:
    AudioThreadScope() noexcept;
    ~AudioThreadScope();
    AudioThreadScope (const AudioThreadScope&) = delete;
    AudioThreadScope& operator= (const AudioThreadScope&) = delete;

    /** True while the calling thread is inside an audio block. */
    static bool isActive() noexcept;
};

/** Lives on the stack around the few lines of the audio thread that may take a lock by design, so that the real-time
    checks of the tests let them pass. Each use says which lock and why its holding time is bounded. */
class AllowedLockScope
{
public:
    AllowedLockScope() noexcept;
    ~AllowedLockScope();
    AllowedLockScope (const AllowedLockScope&) = delete;
    AllowedLockScope& operator= (const AllowedLockScope&) = delete;
};

/** Called at the top of every helper of ours that may block; aborts a debug build that enters it on the audio
    thread, and costs nothing in release. */
void assertMayBlock() noexcept;
