#pragma once

class EnvComponent;

/** Hears of a hand's work in an EnvComponent. Message thread. */
class GraphEnvListener
{
public:
    virtual ~GraphEnvListener() = default;

    /** A curve has another shape, or another curve is the one that is edited. */
    virtual void graphEnvChanged (EnvComponent&) = 0;
};
