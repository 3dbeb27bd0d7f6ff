#pragma once

#include "engine/commands/RowHelpers.h"

/** The channel strips: knobs are single stores, flags are turned under the callback lock. */
namespace CommandTable
{
template <int8_t side>
void assign (CPlatterdex& engine, const CommandCall& call)
{
    setupOf (engine, call.deck).crossfaderSide = side;
}

template <int8_t side>
double readSide (CPlatterdex& engine, int deck, int)
{
    return (setupOf (engine, deck).crossfaderSide != 0) == (side != 0);
}

template <MixOverride wanted>
void overrideMix (CPlatterdex& engine, const CommandCall& call)
{
    const CallbackLock lock (engine.getCallbackLock(), "punch or cut");
    auto& current = channelOf (engine, call.deck).knobs.mixOverride;
    current = current == wanted ? MixOverride::none : wanted;
}

template <MixOverride wanted>
double readOverride (CPlatterdex& engine, int deck, int)
{
    return channelOf (engine, deck).knobs.mixOverride == wanted;
}

constexpr CommandRow channelRows[] {
    {
        .numbers = perDeck (213),
        .name = N_ ("Gain {d}"),
        .constant = "GAIN_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writeParameter<ChannelParameter::gain>,
        .read = readParameter<ChannelParameter::gain>,
        .rest = restOf (ChannelParameter::gain),
        .feedback = Feedback::level,
        .writes = "the gain, 0 to 1, 0.5 unity",
        .reads = "the value",
    },
    {
        .numbers = perDeck (217),
        .name = N_ ("Gain Reset {d}"),
        .constant = "GAIN_RESET_{d}",
        .write = resetParameter<ChannelParameter::gain>,
        .read = readParameter<ChannelParameter::gain>,
        .writes = "gain to 0.5",
        .reads = "the gain",
    },
    {
        .numbers = perDeck (221),
        .name = N_ ("EQ High {d}"),
        .constant = "EQ_HIGH_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writeParameter<ChannelParameter::eqHigh>,
        .read = readParameter<ChannelParameter::eqHigh>,
        .rest = restOf (ChannelParameter::eqHigh),
        .absent = 0.5,
        .feedback = Feedback::level,
        .writes = "the band, 0 to 1, 0.5 flat",
        .reads = "the value",
    },
    {
        .numbers = perDeck (225),
        .name = N_ ("EQ High Reset {d}"),
        .constant = "EQ_HIGH_RESET_{d}",
        .write = resetParameter<ChannelParameter::eqHigh>,
        .read = readParameter<ChannelParameter::eqHigh>,
        .absent = 0.5,
        .writes = "the band to 0.5",
        .reads = "the value",
    },
    {
        .numbers = perDeck (229),
        .name = N_ ("EQ High Kill {d}"),
        .constant = "EQ_HIGH_KILL_{d}",
        .write = toggleParameter<ChannelParameter::killHigh>,
        .read = readParameter<ChannelParameter::killHigh>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (233),
        .name = N_ ("EQ Mid {d}"),
        .constant = "EQ_MID_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writeParameter<ChannelParameter::eqMid>,
        .read = readParameter<ChannelParameter::eqMid>,
        .rest = restOf (ChannelParameter::eqMid),
        .absent = 0.5,
        .feedback = Feedback::level,
        .writes = "the band, 0 to 1, 0.5 flat",
        .reads = "the value",
    },
    {
        .numbers = perDeck (237),
        .name = N_ ("EQ Mid Reset {d}"),
        .constant = "EQ_MID_RESET_{d}",
        .write = resetParameter<ChannelParameter::eqMid>,
        .read = readParameter<ChannelParameter::eqMid>,
        .absent = 0.5,
        .writes = "the band to 0.5",
        .reads = "the value",
    },
    {
        .numbers = perDeck (241),
        .name = N_ ("EQ Mid Kill {d}"),
        .constant = "EQ_MID_KILL_{d}",
        .write = toggleParameter<ChannelParameter::killMid>,
        .read = readParameter<ChannelParameter::killMid>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (245),
        .name = N_ ("EQ Low {d}"),
        .constant = "EQ_LOW_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writeParameter<ChannelParameter::eqLow>,
        .read = readParameter<ChannelParameter::eqLow>,
        .rest = restOf (ChannelParameter::eqLow),
        .absent = 0.5,
        .feedback = Feedback::level,
        .writes = "the band, 0 to 1, 0.5 flat",
        .reads = "the value",
    },
    {
        .numbers = perDeck (249),
        .name = N_ ("EQ Low Reset {d}"),
        .constant = "EQ_LOW_RESET_{d}",
        .write = resetParameter<ChannelParameter::eqLow>,
        .read = readParameter<ChannelParameter::eqLow>,
        .absent = 0.5,
        .writes = "the band to 0.5",
        .reads = "the value",
    },
    {
        .numbers = perDeck (253),
        .name = N_ ("EQ Low Kill {d}"),
        .constant = "EQ_LOW_KILL_{d}",
        .write = toggleParameter<ChannelParameter::killLow>,
        .read = readParameter<ChannelParameter::killLow>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (261),
        .name = N_ ("Volume {d}"),
        .constant = "VOLUME_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writeParameter<ChannelParameter::volume>,
        .read = readParameter<ChannelParameter::volume>,
        .rest = restOf (ChannelParameter::volume),
        .feedback = Feedback::level,
        .writes = "the fader, 0 to 1",
        .reads = "the value",
    },
    {
        .numbers = perDeck (265),
        .name = N_ ("PFL {d}"),
        .constant = "PFL_{d}",
        .write = toggle<&DeckSetup::pfl>,
        .read = readFlag<&DeckSetup::pfl>,
        .feedback = Feedback::lamp,
        .writes = "toggles",
        .reads = "the flag",
    },
    {
        .numbers = perDeck (269),
        .name = N_ ("Crossfader Assign Left {d}"),
        .constant = "CROSSFADER_ASSIGN_LEFT_{d}",
        .write = assign<0>,
        .read = readSide<0>,
        .feedback = Feedback::lamp,
        .writes = "the deck to the left side",
        .reads = "1 if left",
    },
    {
        .numbers = perDeck (273),
        .name = N_ ("Crossfader Assign Right {d}"),
        .constant = "CROSSFADER_ASSIGN_RIGHT_{d}",
        .write = assign<1>,
        .read = readSide<1>,
        .feedback = Feedback::lamp,
        .writes = "the deck to the right side",
        .reads = "1 if right",
    },
    {
        .numbers = perDeck (285),
        .name = N_ ("Balance {d}"),
        .constant = "BALANCE_{d}",
        .kind = Kind::value,
        .shape = Shape::continuous,
        .write = writeParameter<ChannelParameter::balance>,
        .read = readParameter<ChannelParameter::balance>,
        .rest = restOf (ChannelParameter::balance),
        .feedback = Feedback::level,
        .writes = "0 left to 1 right",
        .reads = "the value",
    },
    {
        .numbers = perDeck (289),
        .name = N_ ("Punch {d}"),
        .constant = "PUNCH_{d}",
        .write = overrideMix<MixOverride::punch>,
        .read = readOverride<MixOverride::punch>,
        .feedback = Feedback::lamp,
        .writes = "full level past the crossfader, or back",
        .reads = "1 if so",
    },
    {
        .numbers = perDeck (293),
        .name = N_ ("Cut {d}"),
        .constant = "CUT_{d}",
        .write = overrideMix<MixOverride::cut>,
        .read = readOverride<MixOverride::cut>,
        .feedback = Feedback::lamp,
        .writes = "cut past the crossfader, or back",
        .reads = "1 if so",
    },
};
}
