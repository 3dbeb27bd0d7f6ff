#include "ui/browser/preview/PreviewWave.h"

namespace
{
constexpr Worker::Key newestOnly = 0;
constexpr double heardSeconds = 0.1;

void readOutline (juce::AudioFormatManager& formats, const juce::String& path, PreviewWave::Outline& outline,
                  const std::stop_token& token)
{
    const std::unique_ptr<juce::AudioFormatReader> reader (
        formats.createReaderFor (juce::File::createFileWithoutCheckingPath (path)));
    if (reader == nullptr || reader->lengthInSamples <= 0)
        return;
    const auto step = reader->lengthInSamples / PreviewWave::columns;
    const auto heard = std::min (step, static_cast<juce::int64> (heardSeconds * reader->sampleRate));
    for (int column = 0; column < PreviewWave::columns && !token.stop_requested(); ++column)
    {
        std::array<juce::Range<float>, 2> levels;
        reader->readMaxLevels (column * step, std::max<juce::int64> (1, heard), levels.data(),
                               static_cast<int> (std::min (2u, reader->numChannels)));
        float peak = 0.0f;
        for (const auto& level : levels)
            peak = std::max ({ peak, std::abs (level.getStart()), std::abs (level.getEnd()) });
        outline.peaks[static_cast<size_t> (column)] =
            static_cast<uint8_t> (juce::roundToInt (255.0f * std::min (1.0f, peak)));
        outline.known = column + 1;
    }
}
}

PreviewWave::PreviewWave (FileStreamPlayer& player) : formats (player.formats()) {}

void PreviewWave::read (const juce::String& path)
{
    current = std::make_shared<Outline>();
    if (path.isEmpty())
        return worker.cancel();
    worker.post (newestOnly, { [this, path, outline = current] (const std::stop_token& token)
                               { readOutline (formats, path, *outline, token); } });
}
