#pragma once

#include "analysis/stretch/CElastiqueMC.h"
#include "analysis/stretch/TimeStretcher.h"

/** The stretcher of modes 2 and 3: hands everything on to one CElastiqueMC. */
class CelastiqueClassic : public CElastiqueProIf
{
public:
    explicit CelastiqueClassic (std::unique_ptr<CElastiqueMC> e) : engine (std::move (e)) {}

    int process (const float* const* in, int frames, float* const* out) override
    {
        return engine->process (in, frames, out);
    }
    int getFramesNeeded() override { return engine->getFramesNeeded(); }
    int setOutputBlockSize (int frames) override { return engine->setOutputBlockSize (frames); }
    int getFramesNeededFor (float stretch, float pitch) override
    {
        return engine->getFramesNeededFor (stretch, pitch);
    }
    int setStretchPitch (float* stretch, float pitch, int keepPhase) override
    {
        return engine->setStretchPitch (stretch, pitch, keepPhase);
    }
    int setStretchAndPitch (float stretch, float* pitch, int keepPhase) override
    {
        return engine->setStretchAndPitch (stretch, pitch, keepPhase);
    }
    void reset() override { engine->reset(); }
    void startInside (const float* const* lead) override { engine->startInside (lead); }
    int getLeadFrames() override { return engine->getLeadFrames(); }
    void keepTurns (int framesBack) override { engine->keepTurns (framesBack); }
    double getStretchOfOutput() override { return engine->getStretchOfOutput(); }
    int flush (float* const* out) override { return engine->flush (out); }
    int getPreFramesNeeded() override { return engine->getPreFramesNeeded(); }
    int setStereoMode (int mode) override { return engine->setStereoMode (mode); }
    int setEnvelopeFactor (float) override { return 0; }
    int setEnvelopeOrder (int) override { return 0; }
    double getLatency() override { return engine->getLatency(); }
    double getInputPositionOfOutput() override { return engine->getInputPositionOfOutput(); }
    double getIdealInputPositionOfOutput() override { return engine->getIdealInputPositionOfOutput(); }

private:
    const std::unique_ptr<CElastiqueMC> engine;
};
