#include "support/EngineRequests.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

TEST (EngineRequests, NoneIsLostAndNoneComesTwice)
{
    constexpr int rounds = 100'000;
    EngineRequests requests;
    std::atomic<int> finished { 0 };
    std::vector<std::thread> askers;
    for (int deck = 0; deck < 4; ++deck)
        askers.emplace_back (
            [&, deck]
            {
                for (int i = 0; i < rounds; ++i)
                    requests.ask (EngineRequest::loadNextTrack, deck);
                ++finished;
            });
    uint32_t seen = 0;
    bool wasLast = false;
    while (!wasLast)
    {
        wasLast = finished == 4;
        seen |= requests.take (EngineRequest::loadNextTrack);
    }
    for (auto& each : askers)
        each.join();
    EXPECT_EQ (seen, 0xfu);
    EXPECT_EQ (requests.take (EngineRequest::loadNextTrack), 0u);
    EXPECT_EQ (requests.take (EngineRequest::saveAnalysis), 0u);
}

TEST (EngineRequests, TwoChangesCancelEachOther)
{
    EngineRequests requests;
    for (const auto& [presses, expected] : { std::pair { 1, 1u }, { 2, 0u }, { 3, 1u } })
    {
        for (int i = 0; i < presses; ++i)
            requests.toggle (EngineRequest::toggleAutomix);
        EXPECT_EQ (requests.take (EngineRequest::toggleAutomix), expected);
    }
}
