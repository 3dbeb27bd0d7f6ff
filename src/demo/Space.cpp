#include "demo/Space.h"

Echo::Echo (int delayFrames, double sampleRate)
    : left (static_cast<size_t> (delayFrames)),
      right (static_cast<size_t> (delayFrames))
{
    leftTone.tune (3200.0 / sampleRate, 0.6);
    rightTone.tune (3200.0 / sampleRate, 0.6);
}

StereoSample Echo::process (StereoSample in) noexcept
{
    constexpr double feedback = 0.52;
    const StereoSample out { left[position], right[position] };
    left[position] =
        static_cast<float> (leftTone.lowPass (0.5 * (in.left + in.right) + feedback * out.right));
    right[position] = static_cast<float> (rightTone.lowPass (out.left));
    if (++position == left.size())
        position = 0;
    return out;
}

Room::Room (double seconds, double sampleRate)
{
    // Mutually prime lengths, 21 to 53 ms, so that the echoes of the lines never coincide.
    static constexpr std::array lengths { 929, 1097, 1289, 1433, 1637, 1861, 2099, 2339 };
    for (size_t i = 0; i < lines.size(); ++i)
    {
        lines[i].memory.resize (static_cast<size_t> (lengths[i]));
        lines[i].gain = PortableMath::fromDecibels (-60.0 * lengths[i] / (seconds * sampleRate));
    }
    leftCut.tune (260.0 / sampleRate, 0.7);
    rightCut.tune (260.0 / sampleRate, 0.7);
}

StereoSample Room::process (StereoSample in) noexcept
{
    constexpr double brightness = 0.55;
    const StereoSample fed { leftCut.highPass (in.left), rightCut.highPass (in.right) };

    std::array<double, 8> heard;
    double sum = 0.0;
    for (size_t i = 0; i < lines.size(); ++i)
    {
        auto& line = lines[i];
        line.damped += brightness * (line.memory[line.position] - line.damped);
        heard[i] = line.damped * line.gain;
        sum += heard[i];
    }
    StereoSample out;
    for (size_t i = 0; i < lines.size(); ++i)
    {
        auto& line = lines[i];
        const auto input = i % 2 == 0 ? fed.left : fed.right;
        line.memory[line.position] = static_cast<float> (input + heard[i] - 0.25 * sum);
        if (++line.position == line.memory.size())
            line.position = 0;
        (i % 2 == 0 ? out.left : out.right) += (i & 2) != 0 ? -heard[i] : heard[i];
    }
    return { 0.5 * out.left, 0.5 * out.right };
}
