#include "similarity/extract/SoundExtractor.h"
#include "similarity/store/SessionStore.h"

#include <filesystem>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>

namespace
{
constexpr int32_t interfaceVersion = 1 << 16;
constexpr double lowestRate = 8000.0, highestRate = 400000.0;

/** Calls a function that may run out of memory. @returns `otherwise` then */
template <typename Result, typename Function>
Result guarded (Result otherwise, Function&& function) noexcept
{
    try
    {
        return function();
    }
    catch (...)
    {
        return otherwise;
    }
}

class Extractor final : public SimilarityExtractor
{
public:
    Extractor (double sampleRate, double tempoBpm) : sound (sampleRate), tempo (tempoBpm) {}

    void addAudio (const float* left, const float* right, int32_t frames) override
    {
        isWhole = isWhole && guarded (false, [&] { return sound.add (left, right, frames), true; });
    }

    const SimilarityDescription* finish (double tempoBpm) override
    {
        return guarded<const SimilarityDescription*> (
            nullptr,
            [&]() -> const SimilarityDescription*
            {
                const auto raw = isWhole ? sound.finish() : std::nullopt;
                if (!raw)
                    return nullptr;
                made = describe (*raw, tempoBpm > 0.0 ? tempoBpm : tempo);
                return &made;
            });
    }

    SimilarityFacts facts (const SimilarityDescription* description) override
    {
        return description != nullptr ? description->facts() : SimilarityFacts { 0.0f, 0.0f, -1, 0.0f };
    }

    void release() override { delete this; }

private:
    SoundExtractor sound;
    const double tempo;
    SimilarityDescription made;
    bool isWhole = true; ///< false after a lack of memory
};

class List final : public SimilarityList
{
public:
    explicit List (std::vector<NearestTracks::Found> f) : found (std::move (f)) {}

    int32_t count() override { return static_cast<int32_t> (found.size()); }

    SimilarityItem item (int32_t index) override
    {
        return has (index) ? found[static_cast<size_t> (index)].item : SimilarityItem {};
    }

    const char* path (int32_t index) override
    {
        return has (index) ? found[static_cast<size_t> (index)].path.c_str() : nullptr;
    }

    void release() override { delete this; }

private:
    bool has (int32_t index) const { return index >= 0 && static_cast<size_t> (index) < found.size(); }

    const std::vector<NearestTracks::Found> found;
};

class Session final : public SimilaritySession
{
public:
    int32_t load (const char* path) override
    {
        return path == nullptr ? similarityBadArgument
                               : guarded<int32_t> (similarityNoFile, [&] { return store_.load (path); });
    }

    int32_t save (const char* path) override
    {
        return path == nullptr ? similarityBadArgument
                               : guarded<int32_t> (similarityNotWritten, [&] { return store_.save (path); });
    }

    const char* notice() override
    {
        sentence = guarded (std::string(), [&] { return store_.notice(); });
        return sentence.c_str();
    }

    int32_t count() override { return static_cast<int32_t> (store_.size()); }

    int32_t find (const char* path, SimilarityFacts* facts) override
    {
        return path != nullptr && store_.find (path, facts) ? 1 : 0;
    }

    int32_t store (const char* path, const SimilarityDescription* description) override
    {
        if (path == nullptr || description == nullptr || !isUsable (*description))
            return similarityBadArgument;
        const std::string_view name (path);
        if (name.empty() || name.size() > SessionFile::mostPathBytes)
            return similarityBadArgument;
        return guarded<int32_t> (similarityNotWritten,
                                 [&] { return store_.store (name, *description), similarityOk; });
    }

    SimilarityList* similar (const char* path, const SimilarityQuery* query) override
    {
        if (path == nullptr || query == nullptr)
            return nullptr;
        return guarded<SimilarityList*> (nullptr,
                                         [&]() -> SimilarityList*
                                         {
                                             auto found = store_.similar (path, *query);
                                             return found ? new List (std::move (*found)) : nullptr;
                                         });
    }

    void release() override { delete this; }

private:
    SessionStore store_;
    std::string sentence;
};

class Interface final : public SimilarityInterface
{
public:
    int32_t version() override { return interfaceVersion; }
    void release() override { delete this; }

    int32_t setFolder (const char* path) override
    {
        if (path == nullptr)
            return similarityBadArgument;
        std::error_code fault;
        std::filesystem::create_directories (path, fault);
        return fault ? similarityNotWritten : similarityOk;
    }

    int32_t configureClassification (const char* name) override
    {
        return isNamed (name, "cfg_classification.esc") ? similarityOk : similarityBadArgument;
    }

    int32_t configureSession (const char* name) override
    {
        return isNamed (name, "cfg_session_2002.esc") ? similarityOk : similarityBadArgument;
    }

    SimilaritySession* newSession() override { return new (std::nothrow) Session; }
    int32_t trackBytes() override { return sizeof (SessionFile::StoredTrack); }

    SimilarityExtractor* newExtractor (const char* configuration, double sampleRate, double tempoBpm) override
    {
        if (!isNamed (configuration, "cfg_extraction_2002.esc")
            || !(sampleRate >= lowestRate && sampleRate <= highestRate))
            return nullptr;
        return guarded<SimilarityExtractor*> (nullptr, [&] { return new Extractor (sampleRate, tempoBpm); });
    }

private:
    static bool isNamed (const char* name, std::string_view expected)
    {
        return name != nullptr && name == expected;
    }
};
}

extern "C" __attribute__ ((visibility ("default"))) SimilarityInterface* GetCPPInterface()
{
    return new (std::nothrow) Interface;
}
