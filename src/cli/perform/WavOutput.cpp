#include "cli/perform/WavOutput.h"

#include "support/language/Translate.h"

#include <filesystem>

namespace
{
/** The file itself, where a link leads to it. */
juce::File behindLinks (const juce::File& file)
{
    return file.isSymbolicLink() ? file.getLinkedTarget() : file;
}

/** Anything but a file or nothing: replacing a device by its name would destroy it. */
bool isInTheWay (const juce::File& file)
{
    std::error_code error;
    const auto status = std::filesystem::status (file.getFullPathName().toStdString(), error);
    return std::filesystem::exists (status) && !std::filesystem::is_regular_file (status);
}
}

WavOutput::WavOutput (const juce::File& wanted, double sampleRate, int numChannels)
    : target (behindLinks (wanted))
{
    if (target.isDirectory())
    {
        fail (tr ("it is a folder"));
        return;
    }
    if (isInTheWay (target))
    {
        fail (tr ("it is not a plain file"));
        return;
    }
    if (!target.getParentDirectory().isDirectory())
    {
        fail (tr ("its folder does not exist"));
        return;
    }
    if (target.existsAsFile() && !target.hasWriteAccess())
    {
        fail (tr ("it is write-protected"));
        return;
    }

    part = std::make_unique<juce::TemporaryFile> (target);
    auto file = part->getFile().createOutputStream();
    if (file == nullptr)
    {
        fail (tr ("no file can be made in its folder"));
        return;
    }
    writer.reset (juce::WavAudioFormat().createWriterFor (
        file.get(), sampleRate, static_cast<unsigned int> (numChannels), 32, {}, 0));
    if (writer == nullptr)
        fail (tr ("its format is impossible"));
    else
        stream = file.release();
}

bool WavOutput::fail (const juce::String& reason)
{
    fault = tr ("%1 can't be written: %2.", target.getFullPathName(), reason);
    return false;
}

bool WavOutput::write (const float* const* channels, int frames)
{
    return (writer != nullptr && writer->writeFromFloatArrays (channels, writer->getNumChannels(), frames))
           || fail (tr ("the disk is full or failing"));
}

bool WavOutput::finish()
{
    if (fault.isNotEmpty())
        return false;
    writer->flush();
    stream->flush();
    const auto status = stream->getStatus();
    writer.reset();
    if (status.failed())
        return fail (tr ("the disk is full or failing"));
    return part->overwriteTargetFileWithTemporary() || fail (tr ("it can't be replaced"));
}
