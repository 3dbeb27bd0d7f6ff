#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

int main (int argc, char** argv)
{
    testing::InitGoogleMock (&argc, argv);
    const juce::ScopedJuceInitialiser_GUI juce;
    return RUN_ALL_TESTS();
}
