#pragma once

#include "support/AudioThread.h"
#include "support/PostQueue.h"

#include <cstdint>
#include <vector>

class CPlatterdex;

/** A controller's request to the browser. */
enum class BrowserRequest : uint8_t
{
    listUp,
    listDown,
    listPageUp,
    listPageDown,
    listLoad, ///< the selected song, onto a deck
    listPreview,
    previewPause, ///< or on
    sourceUp,
    sourceDown,
    sourceEnter,
    sourceExit,
    fileUp,
    fileDown,
    fileEnter,
    fileExit,
    fileLoad, ///< the selected file, onto a deck
    filePreview
};

/** Carries the requests of controllers to the browsers of a process, in their order: from any thread to the message thread. A
    request to an engine whose browser is not open is dropped. */
class BrowserRequests
{
public:
    /** The view that carries requests out. Message thread. */
    class Receiver
    {
    public:
        virtual ~Receiver() = default;

        /** @param deck   0 to 3, of a load */
        virtual void carryOut (BrowserRequest, int deck) = 0;
    };

    /** The one of the process. */
    static BrowserRequests& ofProcess() noexcept { return all; }

    /** Any thread; never waits. @param deck   0 to 3, of a load */
    PX_AUDIO_THREAD void post (const CPlatterdex& engine, BrowserRequest request, int deck) noexcept
    {
        queue.push ({ &engine, request,
                      static_cast<uint8_t> (deck) }); // a full queue has more steps than a hand meant
    }

    /** Makes a view the receiver of what is posted for an engine from then on, until it is removed; the one before it is the
        receiver again then. Message thread. */
    void add (const CPlatterdex&, Receiver&);
    void remove (Receiver&);

    /** Hands all that was posted to the receivers; each calls it at its ticks. Message thread. */
    void deliver();

private:
    struct Item
    {
        const CPlatterdex* engine = nullptr;
        BrowserRequest request {};
        uint8_t deck = 0;
    };

    struct Entry
    {
        const CPlatterdex* engine = nullptr;
        Receiver* receiver = nullptr;
    };

    PostQueue<Item, 256> queue;
    std::vector<Entry> receivers;

    static BrowserRequests all;
};
