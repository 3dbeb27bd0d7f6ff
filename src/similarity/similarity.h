#pragma once

#include <stddef.h>
#include <stdint.h>

/** The similarity library: describes how tracks sound, keeps the descriptions and finds the nearest ones.

    It is loaded at run time by name; GetCPPInterface() is its one export. Objects are used through their tables, in the order
    of the functions below, and end with release(). Texts are UTF-8 and end with a zero. No function throws.

    Threads: an extractor belongs to one thread at a time. All else may be called on any thread that may block. */

/** The result of a function. */
enum SimilarityCode
{
    similarityOk = 0,
    similarityRebuilt =
        1, /**< a session file was damaged or of another version: see notice(); what could be read is there */
    similarityNoFile = -1,
    similarityNotWritten = -2,
    similarityBadArgument = -3
};

/** The facts about a described track. */
struct SimilarityFacts
{
    float tempoBpm;      /**< as the extractor was told; 0 if unknown */
    float seconds;       /**< length */
    int32_t key;         /**< 0 to 11: C to B major, 12 to 23: C to B minor; -1: none */
    float keyConfidence; /**< 0 to 1 */
};

/** A track of an answer. */
struct SimilarityItem
{
    SimilarityFacts facts;
    float closeness; /**< 0 to 1: the share of tracks that are farther away, seen from both sides */
    float score;     /**< the order, 0 best: distance in sound, tempo and key by their weights */
    int32_t isCopy;  /**< 1: in all likelihood another copy of the same recording */
};

/** A question. */
struct SimilarityQuery
{
    int32_t count;      /**< most tracks of the answer */
    float tempoWeight;  /**< share of the distance in tempo in the order, 0 to 1 */
    float keyWeight;    /**< share of the key's; the rest is sound */
    int32_t withCopies; /**< 0 leaves out copies of the same recording */
};

/** A description; only the library looks into it. */
struct SimilarityDescription;

class SimilarityExtractor
{
public:
    /** Takes the next samples of a track; full scale is 1. */
    virtual void addAudio (const float* left, const float* right, int32_t frames) = 0;

    /** Ends the audio. @param tempoBpm   0 keeps the one that the extractor was made with
        @returns null if less than three seconds sounded; else a description that holds until release() */
    virtual const SimilarityDescription* finish (double tempoBpm) = 0;

    virtual SimilarityFacts facts (const SimilarityDescription*) = 0;
    virtual void release() = 0;

protected:
    ~SimilarityExtractor() = default;
};

/** An answer, best first; it stays as it is while the session goes on. */
class SimilarityList
{
public:
    virtual int32_t count() = 0;
    virtual SimilarityItem item (int32_t index) = 0;

    /** Holds until release(). */
    virtual const char* path (int32_t index) = 0;
    virtual void release() = 0;

protected:
    ~SimilarityList() = default;
};

/** The tracks that are known, by their path. */
class SimilaritySession
{
public:
    /** Takes over the tracks of a file, which stays open: it is mapped into memory. @returns a SimilarityCode */
    virtual int32_t load (const char* path) = 0;

    /** Brings new tracks into the file, by appending where that will do; another process may do the same at that time.
        @returns a SimilarityCode */
    virtual int32_t save (const char* path) = 0;

    /** One sentence about the last load or save that gave similarityRebuilt; else empty. Holds until the next of them. */
    virtual const char* notice() = 0;

    virtual int32_t count() = 0;

    /** @param facts   filled if the track is known; may be null. @returns 1 if it is, else 0 */
    virtual int32_t find (const char* path, SimilarityFacts* facts) = 0;

    /** Stores a description, or replaces it. @returns a SimilarityCode */
    virtual int32_t store (const char* path, const SimilarityDescription*) = 0;

    /** @returns null if the track isn't known */
    virtual SimilarityList* similar (const char* path, const SimilarityQuery*) = 0;

    virtual void release() = 0;

protected:
    ~SimilaritySession() = default;
};

class SimilarityInterface
{
public:
    /** Major version in the upper 16 bits: another one changes this table. */
    virtual int32_t version() = 0;
    virtual void release() = 0;

    /** Makes the folder of session files. @returns a SimilarityCode */
    virtual int32_t setFolder (const char* path) = 0;

    /** Names of configurations, which are built in: "cfg_classification.esc", "cfg_session_2002.esc".
        @returns a SimilarityCode */
    virtual int32_t configureClassification (const char* name) = 0;
    virtual int32_t configureSession (const char* name) = 0;

    virtual SimilaritySession* newSession() = 0;

    /** @returns bytes of a stored track without its path */
    virtual int32_t trackBytes() = 0;

    /** @param configuration   "cfg_extraction_2002.esc"
        @param sampleRate      Hz, 8000 to 400000
        @param tempoBpm        0 while it is unknown
        @returns null for a wrong argument */
    virtual SimilarityExtractor* newExtractor (const char* configuration, double sampleRate,
                                               double tempoBpm) = 0;

protected:
    ~SimilarityInterface() = default;
};

/** The type of the export, which gives a new interface. */
typedef SimilarityInterface* (*GetCPPInterfaceFunction) (void);
