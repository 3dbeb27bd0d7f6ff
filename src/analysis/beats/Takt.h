#pragma once

#include <cstdint>

/** The beat tracker's face: audio goes in by blocks, out come a tempo, beat marks and a downbeat.

    Calling order of a full analysis: CreateInstance, process() until all audio is in, flush (true),
    getTempoEstimate(), setTempo() where the caller knows better, trackBeats(), then getNumberOfBeats(),
    getDownbeatIndex(), getBeat() and getAverageTempo(), DestroyInstance. For a tempo around a known one only:
    flush (false), setTempo(), trackBeats(), getAverageTempo().

    Operations return a code of AnalysisError. An instance belongs to one thread; instances share nothing. Never the
    audio thread: everything here allocates. */
class CaufTAKT_If
{
public:
    struct Beat
    {
        int32_t position = 0; ///< frames of the signal
        double bpm = 0.0;     ///< tempo at that place
        double strength = 0.0;
    };

    /** The result that getResult gives and setResult takes. */
    struct Result
    {
        float tempo = 0.0f; ///< BPM
        int beats = 0;      ///< number of marks
        int hypotheses = 7;
        int framesInSegment = 0;
        float weight = 0.0f;
        double startPosition = 0.0; ///< of the first downbeat, in frames of the signal
        double beatPeriod = 0.0;    ///< length of a bar in frames
    };

    /** The lists of getNumberOfBeats, getDownbeatIndex and getBeat. */
    enum List
    {
        beatList =
            0, ///< beats and their halves: marks stand half a beat apart, as a deck's beat table wants them
        onsetList = 1,
        barList = 2 ///< the first beat of each bar, of 3 to 7 beats, as the music changes
    };

    virtual ~CaufTAKT_If() = default;

    /** Takes frames of all channels. NaN and infinity count as silence.
        @returns badArgument for a missing channel or a negative count, wrongState after flush() */
    virtual int process (const float* const* channels, int frames) = 0;

    /** Ends the input. Without `finished` no tempo is looked for and the estimate is 0.
        @returns wrongState when called again */
    virtual int flush (bool finished) = 0;

    /** True if a beat period is known. */
    virtual bool hasResult() const = 0;

    /** The tempo, halved or doubled into 65 to 180 BPM; 0 if there is none. */
    virtual float getNormalisedTempo() const = 0;

    /** @returns badArgument for a null, wrongState before there is a result */
    virtual int getResult (Result*) const = 0;

    /** Restores a result without audio: the instance then answers as if it had analysed.
        @param marks   as many as the result counts */
    virtual int setResult (const Result&, const Beat* marks) = 0;

    /** BPM; 0 if none was found. */
    virtual float getTempoEstimate() const = 0;

    /** Tells which tempo trackBeats() is to follow, 20 to 400 BPM; it finds the exact one within 1.6 percent. */
    virtual int setTempo (float bpm) = 0;

    /** Builds the marks. The last three arguments are reserved.
        @param startSeconds   no mark stands before it
        @returns wrongState before flush(), without onsets or without a tempo */
    virtual int trackBeats (float startSeconds, int, int, int) = 0;

    /** 0 before there are marks, and for a list that does not exist; setResult() restores no bars. */
    virtual int getNumberOfBeats (int list) const = 0;

    /** The tempo that most marks agree on, in BPM: the mean over those in and next to the fullest bin of 10 BPM; 0
        without marks. List 1 gives the stored tempo. */
    virtual double getAverageTempo (int list) const = 0;

    /** Beats, not marks, of a bar; -1 if unknown. */
    virtual int getBeatsPerBar (int list) const = 0;

    /** The first mark that is a downbeat.
        @param beatsPerBar   0 asks getBeatsPerBar
        @returns -1 if unknown */
    virtual int getDownbeatIndex (int list, int beatsPerBar) const = 0;

    /** @returns badArgument for a null or an index beyond the list */
    virtual int getBeat (Beat* out, int index, int list) const = 0;

    /** The confidence that the marks stand on the beats of the music: 0 to 100; -1 before there are any, and for restored ones.
        A DJ should listen to what is below 50 before trusting it. */
    virtual int getConfidence() const = 0;

    /** Makes a tracker.
        @param out          receives the instance, or null
        @param sampleRate   11025 Hz or more
        @param channels     1 or more
        @param engine       1 for CaufTAKT3, 0 for CaufTAKT (clips of less than 30 seconds); any other value makes
                            nothing and is no error */
    static int CreateInstance (CaufTAKT_If** out, int sampleRate, int channels, int engine);

    /** Frees an instance and nulls the pointer to it. @returns badArgument for a null */
    static int DestroyInstance (CaufTAKT_If** instance);
};
