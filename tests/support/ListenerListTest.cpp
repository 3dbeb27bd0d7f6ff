#include "support/ListenerList.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{
struct Recorder : EngineListener
{
    void engineEvent (EngineEvent event, int index) override { events.emplace_back (event, index); }
    void engineMessage (const juce::String& text, int deck) override { messages.emplace_back (text, deck); }

    std::vector<std::pair<EngineEvent, int>> events;
    std::vector<std::pair<juce::String, int>> messages;
};
}

TEST (ListenerList, DeliversEveryPostOfSeveralThreadsOnceAndInEachThreadsOrder)
{
    ListenerList list;
    Recorder recorder;
    list.add (recorder);

    constexpr int threads = 3, posts = 300;
    std::vector<std::thread> writers;
    for (int t = 0; t < threads; ++t)
        writers.emplace_back (
            [&list, t]
            {
                for (int i = 0; i < posts; ++i)
                    list.post (EngineEvent::trackLoaded, t * posts + i);
            });
    while (recorder.events.size() < threads * posts / 2)
        list.deliver();
    for (auto& writer : writers)
        writer.join();
    list.deliver();

    ASSERT_EQ (recorder.events.size(), static_cast<size_t> (threads * posts));
    std::vector<int> last (threads, -1);
    for (const auto& [event, index] : recorder.events)
    {
        EXPECT_GT (index, last[static_cast<size_t> (index / posts)]);
        last[static_cast<size_t> (index / posts)] = index;
    }
}

TEST (ListenerList, AFullQueueDropsAndRecovers)
{
    ListenerList list;
    Recorder recorder;
    list.add (recorder);
    for (int i = 0; i < 5000; ++i)
        list.post (EngineEvent::loadBegan, i);
    list.deliver();
    EXPECT_EQ (recorder.events.size(), 1024u);
    EXPECT_EQ (recorder.events.back().second, 1023);

    list.postMessage ("*** Load Error ***|File not found|or DRM protected", 2);
    list.deliver();
    ASSERT_EQ (recorder.messages.size(), 1u);
    EXPECT_EQ (recorder.messages[0].second, 2);
}

TEST (ListenerList, AListenerMayLeaveFromWithinItsCall)
{
    struct Leaver : EngineListener
    {
        explicit Leaver (ListenerList& l) : list (l) {}
        void engineEvent (EngineEvent, int) override
        {
            ++calls;
            list.remove (*this);
        }
        void engineMessage (const juce::String&, int) override {}
        ListenerList& list;
        int calls = 0;
    };

    ListenerList list;
    Leaver leaver (list);
    Recorder stayer;
    list.add (leaver);
    list.add (stayer);
    list.post (EngineEvent::loadBegan, 0);
    list.post (EngineEvent::loadBegan, 1);
    list.deliver();
    EXPECT_EQ (leaver.calls, 1);
    EXPECT_EQ (stayer.events.size(), 2u);
}
