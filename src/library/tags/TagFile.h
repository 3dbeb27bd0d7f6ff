#pragma once

#include <juce_core/juce_core.h>

#include <fileref.h>
#include <tfilestream.h>

#include <memory>
#include <optional>

/** An audio file as TagLib sees it. Reading can't change the file: it is opened for reading only, unless asked
    otherwise. Each function of this folder catches what TagLib throws. Any thread but the audio thread. */
class TagFile
{
public:
    enum class Access
    {
        read,
        write
    };

    /** @param withAudio   reads the audio properties too. A path that is no regular file is never opened: a pipe would
                           wait for its other end. */
    TagFile (const juce::String& path, bool withAudio, Access access = Access::read);

    /** True if TagLib knows the file, found it sound, and has a tag to read or fill. A file beyond the bounds of TagBounds is
        not shown to TagLib. */
    bool isUsable() const { return ref && !ref->isNull() && ref->file()->isValid() && ref->tag() != nullptr; }

    TagLib::Tag& tag() const { return *ref->tag(); }
    const TagLib::AudioProperties* audio() const { return ref->audioProperties(); }

    /** The file as one of TagLib's concrete types, or null. */
    template <typename Type>
    Type* as() const
    {
        return dynamic_cast<Type*> (ref->file());
    }

    bool save() { return ref->save(); }

private:
    std::unique_ptr<TagLib::FileStream> stream; ///< outlives `ref`
    std::optional<TagLib::FileRef> ref;
};

/** Up to the first NUL: a tag may hold one, a text of ours can't. */
inline juce::String toText (const TagLib::String& text)
{
    return juce::String::fromUTF8 (text.toCString (true));
}
