#include "analysis/stretch/CElastiqueMC.h"

#include <algorithm>
#include <cmath>

// The stages of a frame's work: the newest one is analysed, the one before it turned and laid down.

namespace
{
/** The costs of the kinds of stages in relation to each other, measured: analysis, power, phases, synthesis, overlap. */
constexpr double stageCosts[] = { 7.0, 1.0, 8.0, 7.0, 2.0 };
constexpr double totalCost = 25.0;
}

int CElastiqueMC::stagesFor (double share) const noexcept
{
    auto kind = 0;
    for (auto wanted = share * totalCost; kind < 5 && wanted > 0.0; ++kind)
    {
        if (wanted < stageCosts[kind])
            return kind * workChannels
                   + static_cast<int> (std::ceil (wanted / stageCosts[kind] * workChannels));
        wanted -= stageCosts[kind];
    }
    return kind * workChannels;
}

void CElastiqueMC::runStages (int upTo) noexcept
{
    for (; stage < upTo; ++stage)
    {
        const auto channel = stage % workChannels;
        const auto isLast = channel == workChannels - 1;
        switch (stage / workChannels)
        {
        case 0:
            analyse (channel);
            break;
        case 1:
            addPower (channel, isLast);
            break;
        case 2:
            if (channel == 0)
                findPeaks();
            if (isLast)
                turnPhases();
            break;
        case 3:
            synthesise (channel);
            break;
        default:
            overlapAdd (channel);
            break;
        }
    }
}

void CElastiqueMC::analyse (int channel) noexcept
{
    const auto newest = timeline.newestFrame();
    input.forPieces (
        channel, timeline.frame (newest).in, frameLength,
        [to = time.data(), window = analysisWindow.data()] (const float* x, int offset, int count)
        {
            for (int i = 0; i < count; ++i)
                to[offset + i] = x[i] * window[offset + i];
        });
    transform->forward (spectra (newest).bins[static_cast<size_t> (channel)].data(), time.data());
}

void CElastiqueMC::addPower (int channel, bool isLast) noexcept
{
    const auto& turner = turners[static_cast<size_t> (stereoMode)];
    const auto newest = timeline.newestFrame();
    turner.addPower (spectra (newest), channel);
    if (isLast)
        timeline.setPower (newest, turner.totalPower (spectra (newest)) / (windowEnergy * frameLength));
}

bool CElastiqueMC::isTurning (int64_t frame) const noexcept
{
    const auto &now = timeline.frame (frame), &before = timeline.frame (frame - 1);
    return frame > 0 && now.out - before.out != now.in - before.in;
}

void CElastiqueMC::findPeaks() noexcept
{
    if (const auto frame = timeline.newestFrame() - 1; isTurning (frame))
        turners[static_cast<size_t> (stereoMode)].findPeaks (spectra (frame));
}

void CElastiqueMC::turnPhases() noexcept
{
    const auto frame = timeline.newestFrame() - 1;
    if (frame < 1)
        return;
    auto& turner = turners[static_cast<size_t> (stereoMode)];
    const auto &now = timeline.frame (frame), &before = timeline.frame (frame - 1);
    if (isTurning (frame))
        turner.propagate (spectra (frame), spectra (frame - 1), static_cast<int> (now.in - before.in),
                          static_cast<int> (now.out - before.out));
    else if (now.ratio == 1.0)
        turner.relax();
    if (now.onset)
        turner.resetRisen (spectra (frame - (now.isDeferred ? 2 : 1)), spectra (frame + 1));
}

void CElastiqueMC::synthesise (int channel) noexcept
{
    const auto frame = timeline.newestFrame() - 1;
    if (frame < 0 || channel < workChannels - channels)
        return;
    // Leaves out the bins that the resampler would fold over.
    const auto half = 0.5 * sampleRate;
    const auto cutoff = std::min (half, half / timeline.frame (frame).pitch);
    const auto cutoffBin = static_cast<int> (std::ceil (cutoff / sampleRate * frameLength));
    const auto c = static_cast<size_t> (channel);
    turners[static_cast<size_t> (stereoMode)].turn (frequency.data(), spectra (frame).bins[c].data(),
                                                    std::clamp (cutoffBin, 0, frameLength / 2));
    transform->inverse (synthesised[c].data(), frequency.data());
}

void CElastiqueMC::overlapAdd (int channel) noexcept
{
    const auto frame = timeline.newestFrame() - 1;
    if (frame < 0 || channel < workChannels - channels)
        return;
    auto add = [&] (int to, const float* x, const float* window)
    {
        vocoded.forPieces (to, timeline.frame (frame).out, frameLength,
                           [&] (float* sum, int offset, int count)
                           {
                               for (int i = 0; i < count; ++i)
                                   sum[i] += x[offset + i] * window[offset + i];
                           });
    };
    add (channel, synthesised[static_cast<size_t> (channel)].data(), synthesisWindow.data());
    if (channel == workChannels - 1)
        vocoded.forPieces (workChannels, timeline.frame (frame).out, frameLength,
                           [&] (float* sum, int offset, int count)
                           {
                               for (int i = 0; i < count; ++i)
                                   sum[i] += product.data()[offset + i];
                           });
}
